// Configurations as administrators keep them, in plain ASCII so that other libraries can read them too.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace pellorin {

// A Pellorin.ini as a small site has it: the ADMIN section, 12 mail servers and 7 instances.
std::string UsualIniFile();

// A Pellorin.ini of this many mail servers, each section filled up to about `sectionSize` bytes.
std::string LargeIniFile(int sections, std::size_t sectionSize);

// A Pellorin.ini of two mail servers and this many instances; `queuesOf` gives each instance's "Queues".
std::string InstancesIniFile(int instances, const std::function<std::string(int instance)>& queuesOf);

std::string MailSectionName(int number);
std::string InstanceName(int number);  // without "SQL:"

// The definition file of a queue.
std::string QueueFile(int number);

}  // namespace pellorin
