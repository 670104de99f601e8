// UTF-8 texts, character by character.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/Text.h"

namespace pellorin {

struct Utf8Character {
  char32_t value = 0;
  std::size_t length = 0;  // bytes; 0 when the text is not UTF-8 here
};

// The character at `position`. Overlong forms, surrogates and values beyond U+10FFFF are not UTF-8.
inline Utf8Character DecodeUtf8(std::string_view text, std::size_t position) {
  const auto byteAt = [text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
  const unsigned char first = byteAt(position);
  if (first < 0x80) return {first, 1};
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || text.size() - position < length) return {};
  char32_t value = first & (0x7Fu >> length);
  for (std::size_t index = 1; index < length; ++index) {
    const unsigned char next = byteAt(position + index);
    if ((next & 0xC0) != 0x80) return {};
    value = (value << 6) | (next & 0x3Fu);
  }
  constexpr std::array<char32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (value < kSmallest[length] || value > 0x10FFFF || surrogate) return {};
  return {value, length};
}

inline void AppendUtf8(std::string& text, char32_t value) {
  const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
  if (value < 0x80) {
    append(value);
    return;
  }
  if (value < 0x800) {
    append(0xC0 | (value >> 6));
  } else {
    if (value < 0x10000) {
      append(0xE0 | (value >> 12));
    } else {
      append(0xF0 | (value >> 18));
      append(0x80 | ((value >> 12) & 0x3F));
    }
    append(0x80 | ((value >> 6) & 0x3F));
  }
  append(0x80 | (value & 0x3F));
}

// Shows any name on one line: each byte that is not UTF-8, and each control character, becomes "\xNN".
inline std::string Escaped(std::string_view text) {
  std::string shown;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t length = DecodeUtf8(text, position).length;
    if (length > 0 && !IsControlCharacter(text[position]))
      shown += text.substr(position, length);
    else
      AppendHex(shown += "\\x", static_cast<unsigned char>(text[position]));
    position += length > 0 ? length : 1;
  }
  return shown;
}

}  // namespace pellorin
