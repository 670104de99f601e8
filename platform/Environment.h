// The environment of this process.
#pragma once

#include <string>

namespace pellorin {

// The value of the variable. One that is empty counts as absent, and gives `otherwise`.
std::string EnvironmentOr(const char* variable, const std::string& otherwise);

}  // namespace pellorin
