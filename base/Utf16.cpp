#include "base/Utf16.h"

#include "base/Utf8.h"

namespace pellorin {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstBeyond = 0x10000;  // characters from here on are pairs

bool IsHigh(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLow(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

void AppendUtf16(std::u16string& text, char32_t character) {
  if (character < kFirstBeyond) {
    text += static_cast<char16_t>(character);
    return;
  }
  const char32_t rest = character - kFirstBeyond;
  text += static_cast<char16_t>(0xD800 + (rest >> 10));
  text += static_cast<char16_t>(0xDC00 + (rest & 0x3FF));
}

}  // namespace

std::u16string ToUtf16(std::string_view utf8) {
  std::u16string text;
  text.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const Utf8Character character = DecodeUtf8(utf8, position);
    AppendUtf16(text, character.length == 0 ? kReplacement : character.value);
    position += character.length == 0 ? 1 : character.length;
  }
  return text;
}

std::string ToUtf8(std::u16string_view utf16) {
  std::string text;
  text.reserve(utf16.size());
  for (std::size_t position = 0; position < utf16.size(); ++position) {
    const char16_t unit = utf16[position];
    const bool isPair = IsHigh(unit) && position + 1 < utf16.size() && IsLow(utf16[position + 1]);
    if (isPair) {
      const char32_t high = static_cast<char32_t>(unit - 0xD800) << 10;
      AppendUtf8(text, kFirstBeyond + high + static_cast<char32_t>(utf16[++position] - 0xDC00));
    } else {
      AppendUtf8(text, IsHigh(unit) || IsLow(unit) ? kReplacement : char32_t{unit});
    }
  }
  return text;
}

std::string Shortened(std::string_view utf8, std::size_t most) {
  const std::u16string units = ToUtf16(utf8);
  return units.size() > most ? ToUtf8(units.substr(0, most)) + "..." : std::string(utf8);
}

}  // namespace pellorin
