#include "platform/Guid.h"

#include <sys/random.h>

#include <array>
#include <cerrno>

#include "base/ErrorNumbers.h"
#include "base/NumberedError.h"
#include "base/Text.h"

namespace pellorin {
namespace {

using GuidBytes = std::array<unsigned char, 16>;

constexpr std::size_t kFetchedAtOnce = 64;

// Returns how many of them the system has filled.
std::size_t FetchRandomBytes(std::array<GuidBytes, kFetchedAtOnce>& guids) {
  ssize_t count = 0;
  do {
    count = ::getrandom(guids.data(), sizeof guids, 0);
  } while (count == -1 && errno == EINTR);
  if (count < static_cast<ssize_t>(sizeof(GuidBytes))) {
    throw NumberedError(kGuidNotCreated, "GenerateGUID", "CoCreateGuid failed");
  }
  return static_cast<std::size_t>(count) / sizeof(GuidBytes);
}

// Every section of a configuration gets a GUID. Asking the system for each one would take longer than all the
// rest of loading.
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
  std::string text = "{";
  for (std::size_t index = 0; index < bytes.size(); ++index) {
    if (index == 4 || index == 6 || index == 8 || index == 10) text += '-';
    AppendHex(text, bytes[index]);
  }
  return text + "}";
}

}  // namespace pellorin
