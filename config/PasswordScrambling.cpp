#include "config/PasswordScrambling.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <stdexcept>
#include <utility>

#include "base/AnsiText.h"
#include "base/ErrorNumbers.h"
#include "base/NumberedError.h"
#include "config/RandomGenerator.h"
#include "config/SettingKeys.h"

namespace pellorin {
namespace {

// Packed values start at ";", above the blank and the control characters.
constexpr int kFirstCode = 59;
constexpr std::size_t kGroup = 3;

template <typename Work>
std::string Guarded(int number, const std::string& operation, Work work) {
  try {
    return work();
  } catch (const std::exception& failure) {
    throw NumberedError(number, "PellorinConfig, ConfigUtils, " + operation, failure.what());
  }
}

std::string AnsiCodes(std::string_view text) {
  auto codes = Utf8ToAnsi(text);
  if (!codes) throw std::runtime_error("The password holds a character that code page 1252 does not have.");
  return *std::move(codes);
}

int CodeOf(char character) {
  return static_cast<unsigned char>(character);
}

// Seeding overwrites the whole state, so a fresh generator per call is equivalent to one that lives as
// long as the program.
RandomGenerator SeededFrom(const std::string& keyCodes) {
  RandomGenerator generator;
  generator.Randomize(static_cast<double>(generator.NextFrom(-1.0F)));
  for (const char character : keyCodes) {
    const float product = generator.Next() * static_cast<float>(CodeOf(character));
    generator.Randomize(static_cast<double>(generator.NextFrom(-product)));
  }
  return generator;
}

// Seeding is by far the longest step, and the program has only one key, so it is done once.
RandomGenerator SeededFor(std::string_view key) {
  static const RandomGenerator kForPasswords = SeededFrom(AnsiCodes(kPasswordKey));
  return key == kPasswordKey ? kForPasswords : SeededFrom(AnsiCodes(key));
}

// Its own inverse when the generator starts from the same state.
std::string EncryptDecrypt(std::string codes, RandomGenerator generator) {
  return Guarded(kEncryptDecryptFailed, "EncryptDecrypt", [&] {
    for (char& character : codes) character = static_cast<char>(CodeOf(character) ^ generator.NextByte());
    return std::move(codes);
  });
}

// Each group of three codes becomes four characters: one for the low six bits of each code, and one for the
// three pairs of top bits.
std::string Packed(const std::string& codes) {
  std::string packed;
  packed.reserve(codes.size() + (codes.size() + kGroup - 1) / kGroup);
  int topBits = 0;
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const int code = CodeOf(codes[i]);
    const std::size_t place = i % kGroup;
    packed += static_cast<char>((code & 63) + kFirstCode);
    topBits |= (code >> 6) << (4 - 2 * static_cast<int>(place));
    if (place == kGroup - 1 || i + 1 == codes.size()) {
      packed += static_cast<char>(topBits + kFirstCode);
      topBits = 0;
    }
  }
  return packed;
}

// Also takes texts that Packed never writes: of any length from 1, with any codes. A code below the first one
// gives a negative value, whose low bits count. The division rounds towards zero, as the service's does.
std::string Unpacked(const std::string& packed) {
  const std::size_t last = packed.size() - 1;
  const std::size_t length = last - last / 4;
  std::string codes;
  codes.reserve(length);
  std::size_t position = 0;
  int topBits = 0;
  for (std::size_t i = 0; i < length; ++i) {
    const std::size_t place = i % kGroup;
    if (place == 0) topBits = CodeOf(packed[std::min(position + kGroup, last)]) - kFirstCode;
    const int divisor = place == 0 ? 16 : place == 1 ? 4 : 1;
    const int high = ((topBits / divisor) & 3) * 64;
    codes += static_cast<char>(((CodeOf(packed[position]) - kFirstCode) | high) & 0xFF);
    position += place == kGroup - 1 ? 2 : 1;
  }
  return codes;
}

bool IsPasswordName(std::string_view settingName) {
  return settingName == SqlKey::kSqlPassword || settingName == MailKey::kPassword ||
         settingName == AdminKey::kSchedulerPassword;
}

}  // namespace

std::string EncryptString(std::string_view text, std::string_view key) {
  return Guarded(kEncryptStringFailed, "EncryptString",
                 [&] { return Packed(EncryptDecrypt(AnsiCodes(text), SeededFor(key))); });
}

std::string DecryptString(std::string_view stored, std::string_view key) {
  if (stored.empty()) return {};
  return Guarded(kDecryptStringFailed, "DecryptString",
                 [&] { return AnsiToUtf8(EncryptDecrypt(Unpacked(AnsiCodes(stored)), SeededFor(key))); });
}

std::string StoredText(std::string_view settingName, const std::string& value) {
  return IsPasswordName(settingName) ? EncryptString(value, kPasswordKey) : value;
}

void MakeClear(std::string_view settingName, std::string& value) {
  if (IsPasswordName(settingName)) value = DecryptString(value, kPasswordKey);
}

}  // namespace pellorin
