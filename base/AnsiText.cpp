#include "base/AnsiText.h"

#include <algorithm>
#include <array>

#include "base/Text.h"
#include "base/Utf8.h"

namespace pellorin {
namespace {

// The characters of the codes 80 to 9F; every other code is the number of its character.
constexpr char32_t kFirstSpecial = 0x80;
constexpr std::array<char32_t, 32> kSpecial{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::optional<char> AnsiCodeOf(char32_t character) {
  if (character < kFirstSpecial || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<char>(character);
  }
  const auto found = std::find(kSpecial.begin(), kSpecial.end(), character);
  if (found == kSpecial.end()) return std::nullopt;
  return static_cast<char>(kFirstSpecial + static_cast<char32_t>(found - kSpecial.begin()));
}

}  // namespace

// Nearly every text is ASCII, which is the same in both encodings.
std::string AnsiToUtf8(std::string_view ansi) {
  if (IsAscii(ansi)) return std::string(ansi);
  std::string utf8;
  utf8.reserve(ansi.size());
  for (const char byte : ansi) {
    const char32_t code = static_cast<unsigned char>(byte);
    const bool special = code >= kFirstSpecial && code - kFirstSpecial < kSpecial.size();
    AppendUtf8(utf8, special ? kSpecial[code - kFirstSpecial] : code);
  }
  return utf8;
}

std::optional<std::string> Utf8ToAnsi(std::string_view utf8) {
  if (IsAscii(utf8)) return std::string(utf8);
  std::string ansi;
  ansi.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const Utf8Character character = DecodeUtf8(utf8, position);
    if (character.length == 0) return std::nullopt;
    const std::optional<char> code = AnsiCodeOf(character.value);
    if (!code) return std::nullopt;
    ansi += *code;
    position += character.length;
  }
  return ansi;
}

}  // namespace pellorin
