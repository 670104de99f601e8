// The variables of the program's environment.
#pragma once

#include <string>

namespace pellorin {

// The variable's value, or `fallback` when the variable is absent or empty.
std::string EnvironmentOr(const char* variable, const std::string& fallback);

}  // namespace pellorin
