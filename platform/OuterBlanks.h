// A text without the blanks and tabs at its ends: what the readers of dates and numbers look at.
#pragma once

#include <string_view>

namespace pellorin {

inline constexpr std::string_view kBlanks = " \t";

inline std::string_view WithoutOuterBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace pellorin
