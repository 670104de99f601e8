// The variables of the program's environment.
#pragma once

#include <string>

namespace pellorin {

// The variable's value. A variable that is empty counts as absent.
std::string EnvironmentOr(const char* variable, const std::string& fallback);

}  // namespace pellorin
