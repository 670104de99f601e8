#include "platform/Guid.h"

#include <sys/random.h>

#include <array>
#include <cerrno>

#include "base/NumberedError.h"

namespace pellorin {
namespace {

using GuidBytes = std::array<unsigned char, 16>;

constexpr std::size_t kFetchedAtOnce = 64;

// As many whole ones as the system gives.
std::size_t FetchRandomBytes(std::array<GuidBytes, kFetchedAtOnce>& guids) {
  constexpr int kCannotCreate = 50002;
  ssize_t count = 0;
  do {
    count = ::getrandom(guids.data(), sizeof guids, 0);
  } while (count == -1 && errno == EINTR);
  if (count < static_cast<ssize_t>(sizeof(GuidBytes))) {
    throw NumberedError(kCannotCreate, "GenerateGUID", "CoCreateGuid failed");
  }
  return static_cast<std::size_t>(count) / sizeof(GuidBytes);
}

// Every section of a configuration gets a GUID: asking the system for each would take longer than the rest.
GuidBytes RandomBytes() {
  static thread_local std::array<GuidBytes, kFetchedAtOnce> fetched;
  static thread_local std::size_t left = 0;
  if (left == 0) left = FetchRandomBytes(fetched);
  return fetched[--left];
}

}  // namespace

std::string GenerateGUID() {
  GuidBytes bytes = RandomBytes();
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);  // version 4: random
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);  // the usual variant
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string text = "{00000000-0000-0000-0000-000000000000}";
  std::size_t place = 1;
  for (const unsigned char byte : bytes) {
    if (text[place] == '-') ++place;
    text[place++] = kDigits[byte >> 4];
    text[place++] = kDigits[byte & 0x0F];
  }
  return text;
}

}  // namespace pellorin
