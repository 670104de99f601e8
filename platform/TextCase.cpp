#include "platform/TextCase.h"

#include <locale.h>
#include <wctype.h>

#include <functional>

#include "platform/Utf8.h"

namespace pellorin {
namespace {

constexpr bool IsAscii(char byte) {
  return static_cast<unsigned char>(byte) < 0x80;
}

constexpr char FoldAscii(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

// A locale of its own: names must compare alike whatever language the administrator uses (in Turkish "I" is
// not the capital of "i"). Where the system does not have it, only ASCII letters are folded.
char32_t FoldCharacter(char32_t character) {
  static const locale_t neutral = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (neutral == nullptr) return character;
  return static_cast<char32_t>(towlower_l(static_cast<wint_t>(character), neutral));
}

void AppendFoldedCharacter(std::string& folded, std::string_view text, std::size_t& position) {
  const Utf8Character character = DecodeUtf8(text, position);
  if (character.length == 0) {
    folded += text[position++];
    return;
  }
  AppendUtf8(folded, FoldCharacter(character.value));
  position += character.length;
}

}  // namespace

std::string FoldCase(std::string_view text) {
  std::string folded;
  folded.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    if (IsAscii(text[position])) {
      folded += FoldAscii(text[position++]);
    } else {
      AppendFoldedCharacter(folded, text, position);
    }
  }
  return folded;
}

std::uint32_t HashIgnoringCase(std::string_view text) {
  std::uint32_t hash = 2166136261u;  // FNV-1a
  for (const char byte : text) {
    if (!IsAscii(byte)) return static_cast<std::uint32_t>(std::hash<std::string>{}(FoldCase(text)));
    hash = (hash ^ static_cast<unsigned char>(FoldAscii(byte))) * 16777619u;
  }
  return hash;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
  std::size_t same = 0;
  while (same < left.size() && same < right.size() && IsAscii(left[same]) && IsAscii(right[same])) {
    if (FoldAscii(left[same]) != FoldAscii(right[same])) return false;
    ++same;
  }
  if (same == left.size() && same == right.size()) return true;
  return FoldCase(left.substr(same)) == FoldCase(right.substr(same));
}

}  // namespace pellorin
