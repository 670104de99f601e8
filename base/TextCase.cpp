#include "base/TextCase.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <iterator>

#include "base/CapitalLetters.h"
#include "base/Text.h"
#include "base/Utf8.h"

namespace pellorin {
namespace {

constexpr char FoldAscii(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

char32_t FoldCharacter(char32_t character) {
  const auto range = std::ranges::lower_bound(kCapitalLetters, character, {}, &CapitalLetters::last);
  const bool isCapital = range != std::end(kCapitalLetters) && character >= range->first &&
                         (character - range->first) % range->step == 0;
  return isCapital ? character + static_cast<char32_t>(range->distance) : character;
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
  constexpr std::uint64_t kNonAscii = 0x8080808080808080u;
  // Makes all letters lower-case. Some other characters become equal too, which is harmless.
  constexpr std::uint64_t kSmallLetters = 0x2020202020202020u;
  constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15u;
  std::uint64_t hash = text.size();
  std::uint64_t allBits = 0;
  const auto add = [&](std::uint64_t word) {
    allBits |= word;
    hash = (hash ^ (word | kSmallLetters)) * kFactor;
    hash ^= hash >> 32;
  };
  std::uint64_t word = 0;
  if (text.size() < sizeof word) {
    for (const char byte : text) word = word << 8 | static_cast<unsigned char>(byte);
    add(word);
  } else {
    for (std::size_t position = 0; position + sizeof word < text.size(); position += sizeof word) {
      std::memcpy(&word, text.data() + position, sizeof word);
      add(word);
    }
    std::memcpy(&word, text.data() + text.size() - sizeof word, sizeof word);
    add(word);
  }
  if ((allBits & kNonAscii) == 0) return static_cast<std::uint32_t>(hash);
  // Some letters fold to ASCII, such as the Kelvin sign to "k". Then the hash is that of the ASCII text.
  const std::string folded = FoldCase(text);
  return IsAscii(folded) ? HashIgnoringCase(folded)
                         : static_cast<std::uint32_t>(std::hash<std::string>{}(folded));
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
