// Compares UTF-8 texts without regard to letter case, for the names of sections, settings and files:
// character by character, the same on every system and in every locale. Bytes that are not UTF-8 are compared
// as they are.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pellorin {

std::string FoldCase(std::string_view text);
// Equal for texts that are EqualIgnoringCase.
std::uint32_t HashIgnoringCase(std::string_view text);
bool EqualIgnoringCase(std::string_view left, std::string_view right);

// Whether the text begins or ends with these ASCII characters, in any letter case.
inline bool StartsWithIgnoringCase(std::string_view text, std::string_view ascii) {
  return EqualIgnoringCase(text.substr(0, ascii.size()), ascii);
}
inline bool EndsWithIgnoringCase(std::string_view text, std::string_view ascii) {
  return text.size() >= ascii.size() && EqualIgnoringCase(text.substr(text.size() - ascii.size()), ascii);
}

}  // namespace pellorin
