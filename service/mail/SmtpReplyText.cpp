#include "service/mail/SmtpReplyText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "base/AnsiText.h"
#include "base/Text.h"
#include "base/Utf8.h"
#include "service/mail/Base64.h"

namespace pellorin {
namespace {

constexpr std::string_view kMask = "***";

bool IsUtf8(std::string_view text) {
  for (std::size_t index = 0; index < text.size();) {
    const std::size_t length = DecodeUtf8(text, index).length;
    if (length == 0) return false;
    index += length;
  }
  return true;
}

bool BelongsToWord(char character) {
  const auto code = static_cast<unsigned char>(character);
  return !IsAscii(character) || (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') ||
         (code >= 'a' && code <= 'z');
}

bool StandsAlone(std::string_view text, std::size_t begin, std::size_t end) {
  const bool goesOnBefore = begin > 0 && BelongsToWord(text[begin - 1]) && BelongsToWord(text[begin]);
  const bool goesOnAfter = end < text.size() && BelongsToWord(text[end - 1]) && BelongsToWord(text[end]);
  return !goesOnBefore && !goesOnAfter;
}

void Mask(std::string& text, const std::string& secret) {
  constexpr std::size_t kShort = 4;  // shorter ones are likely to be parts of innocent words
  if (secret.empty()) return;
  for (std::size_t at = 0; (at = text.find(secret, at)) != std::string::npos;) {
    if (secret.size() < kShort && !StandsAlone(text, at, at + secret.size())) {
      ++at;
      continue;
    }
    text.replace(at, secret.size(), kMask);
    at += kMask.size();
  }
}

// The messages of an NTLM login all begin alike.
void MaskNtlm(std::string& text) {
  constexpr std::string_view kBegin = "TlRMTVNTUAA";  // "NTLMSSP" and NUL in Base64
  static const std::string kBase64OrPadding = std::string(kBase64Characters) + "=";
  for (std::size_t at = 0; (at = text.find(kBegin, at)) != std::string::npos; at += kMask.size())
    text.replace(at, std::min(text.find_first_not_of(kBase64OrPadding, at), text.size()) - at, kMask);
}

std::string Masked(std::string text, const std::string& user, const std::string& password) {
  if (user.empty()) return text;
  const std::string nul(1, '\0');
  const std::array<std::string, 4> secrets{Base64(nul + user + nul + password), Base64(password),
                                           Base64(user), password};
  for (const std::string& secret : secrets) Mask(text, secret);
  MaskNtlm(text);
  return text;
}

}  // namespace

std::string ShownReply(const std::vector<std::string>& lines, const std::string& user,
                       const std::string& password) {
  std::string shown;
  for (const std::string& line : lines) {
    const std::size_t codeSize = std::min<std::size_t>(line.size(), 4);
    std::string words = Masked(line.substr(codeSize), user, password);
    if (!IsUtf8(words)) words = Masked(AnsiToUtf8(words), user, password);
    std::string text = line.substr(0, codeSize) + words;
    std::replace_if(text.begin(), text.end(), IsControlCharacter, ' ');
    shown += "\r\n" + text;
  }
  return shown;
}

}  // namespace pellorin
