#include "platform/Environment.h"

#include <cstdlib>

namespace pellorin {

std::string EnvironmentOr(const char* variable, const std::string& fallback) {
  const char* value = std::getenv(variable);
  return value == nullptr || *value == '\0' ? fallback : value;
}

}  // namespace pellorin
