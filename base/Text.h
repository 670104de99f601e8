// Small operations on texts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace pellorin {

inline constexpr std::string_view kBlanks = " \t";

// The byte-order marks that a file may begin with.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
inline constexpr std::string_view kUtf16LittleMark = "\xFF\xFE";
inline constexpr std::string_view kUtf16BigMark = "\xFE\xFF";

// These two take one byte of UTF-8 or of code page 1252.
inline bool IsAscii(char byte) {
  return static_cast<unsigned char>(byte) < 0x80;
}
inline bool IsControlCharacter(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

// Eight bytes at a time, because nearly every text is checked while it is loaded.
inline bool IsAscii(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080u;
  std::uint64_t bits = 0;
  std::uint64_t word = 0;
  std::size_t position = 0;
  for (; position + sizeof word <= text.size(); position += sizeof word) {
    std::memcpy(&word, text.data() + position, sizeof word);
    bits |= word;
  }
  for (; position < text.size(); ++position) bits |= static_cast<unsigned char>(text[position]);
  return (bits & kHighBits) == 0;
}
inline bool HoldsControlCharacter(std::string_view text) {
  return std::ranges::any_of(text, IsControlCharacter);
}

// Two upper-case digits: AppendHex(text, '\n') adds "0A".
inline void AppendHex(std::string& text, unsigned char byte) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  (text += kDigits[byte >> 4u]) += kDigits[byte & 0xFu];
}

// The text without the blanks and tabs at its ends.
inline std::string_view WithoutOuterBlanks(std::string_view text) {
  const auto isBlank = [](char byte) { return byte == ' ' || byte == '\t'; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

// Splits at a separator of one or more characters: SplitAt(",", "a,,b") is {"a", "", "b"}. The
// empty text has no parts.
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
