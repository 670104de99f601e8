// The value, or the default if the value is empty or consists of blanks.
#pragma once

#include <string>
#include <string_view>

namespace pellorin {

inline std::string ValueOrDefault(std::string_view value, std::string_view defaultValue) {
  return std::string(value.find_first_not_of(' ') == std::string_view::npos ? defaultValue : value);
}

}  // namespace pellorin
