// The name of the computer that runs this program.
#pragma once

#include <string>

namespace pellorin {

std::string GetHostName();     // whole
std::string GetMachineName();  // the host name up to its first dot

}  // namespace pellorin
