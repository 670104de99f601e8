// Checks the names of sections of Pellorin.ini, without their prefixes, and of queues: the next start must
// find them again.
#pragma once

#include <string>
#include <string_view>

namespace pellorin {

// Why the name cannot be used, as a sentence for the user; empty when it can.
std::string NameProblem(std::string_view name);

// The same for a text that a setting must give back as it is.
std::string ValueProblem(std::string_view text);

// False for a name with one of ; : * ? " < > | ' ` , { } ] [ in it.
bool IsValidQueueName(std::string_view name);

// The same for a queue's name that IsValidQueueName accepts.
std::string QueueNameProblem(std::string_view name);

}  // namespace pellorin
