// Small operations on texts.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pellorin {

inline constexpr std::string_view kBlanks = " \t";

// The text without the blanks and tabs at its ends.
inline std::string_view WithoutOuterBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Splits at a separator of one or more characters. The empty text has no parts; otherwise there is one part
// more than there are separators, so parts at the ends and between two separators may be empty.
inline std::vector<std::string> SplitAt(std::string_view separator, std::string_view text) {
  std::vector<std::string> parts;
  if (text.empty()) return parts;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find(separator, begin)) != std::string_view::npos;
       begin = end + separator.size())
    parts.emplace_back(text.substr(begin, end - begin));
  parts.emplace_back(text.substr(begin));
  return parts;
}

}  // namespace pellorin
