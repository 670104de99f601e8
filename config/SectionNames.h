// The names that a section of Pellorin.ini, after its prefix, and a queue can bear so that the next
// start finds them again.
#pragma once

#include <string>
#include <string_view>

namespace pellorin {

// Why the name cannot be used, as a sentence for the user; empty when it can.
std::string NameProblem(std::string_view name);

// Why a setting could not give the text back as it is, as NameProblem says it.
std::string ValueProblem(std::string_view text);

// False for a name with one of ; : * ? " < > | ' ` , { } ] [ in it.
bool IsValidQueueName(std::string_view name);

// Why a queue would not come back under this valid name, as NameProblem says it.
std::string QueueNameProblem(std::string_view name);

}  // namespace pellorin
