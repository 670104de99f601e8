// Which names a section of Pellorin.ini can carry behind its prefix, and a queue, so that the next start
// finds them again.
#pragma once

#include <string>
#include <string_view>

namespace pellorin {

// Why the name cannot be used, as a sentence for the user; empty when it can.
std::string NameProblem(std::string_view name);

// Why a setting could not hold the text and give it back as it is.
std::string ValueProblem(std::string_view text);

// False for a name with one of ; : * ? " < > | ' ` , { } ] [ in it.
bool IsValidQueueName(std::string_view name);

// Why a queue of a valid name would not come back under it, as NameProblem says it.
std::string QueueNameProblem(std::string_view name);

}  // namespace pellorin
