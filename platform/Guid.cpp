#include "platform/Guid.h"

#include <sys/random.h>

#include <array>
#include <cerrno>

#include "platform/NumberedError.h"

namespace pellorin {
namespace {

using GuidBytes = std::array<unsigned char, 16>;

GuidBytes RandomBytes() {
  constexpr int kCannotCreate = 50002;
  GuidBytes bytes{};
  ssize_t count = 0;
  do {
    count = ::getrandom(bytes.data(), bytes.size(), 0);
  } while (count == -1 && errno == EINTR);
  if (count != static_cast<ssize_t>(bytes.size())) {
    throw NumberedError(kCannotCreate, "GenerateGUID", "CoCreateGuid failed");
  }
  return bytes;
}

}  // namespace

std::string GenerateGUID() {
  GuidBytes bytes = RandomBytes();
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);  // version 4: random
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);  // the usual variant
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string text = "{";
  for (std::size_t index = 0; index < bytes.size(); ++index) {
    if (index == 4 || index == 6 || index == 8 || index == 10) text += '-';
    text += kDigits[bytes[index] >> 4];
    text += kDigits[bytes[index] & 0x0F];
  }
  return text + "}";
}

}  // namespace pellorin
