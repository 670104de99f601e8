#include "platform/posix/CredentialCache.h"

#include <algorithm>
#include <cstddef>

namespace pellorin {
namespace {

// Takes big-endian values off the front. Once it has read beyond the end, it has failed and gives zeros.
class CacheReader {
 public:
  explicit CacheReader(std::string_view bytes) : rest_(bytes) {}

  bool HasFailed() const { return hasFailed_; }
  bool IsAtEnd() const { return rest_.empty(); }

  std::string_view Bytes(std::size_t size) {
    if (size > rest_.size()) {
      hasFailed_ = true;
      rest_ = {};
      return {};
    }
    const std::string_view bytes = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return bytes;
  }
  std::uint32_t Number(std::size_t size) {
    std::uint32_t value = 0;
    for (const char byte : Bytes(size)) value = value << 8 | static_cast<std::uint8_t>(byte);
    return value;
  }
  std::string_view Data() { return Bytes(Number(4)); }

  // A kind, the number of components, the realm, the components.
  void SkipPrincipal() {
    Number(4);
    const std::uint32_t components = Number(4);
    Data();
    for (std::uint32_t i = 0; i < components && !hasFailed_; ++i) Data();
  }
  void SkipList() {  // addresses or authorization data: each a kind and its data
    const std::uint32_t count = Number(4);
    for (std::uint32_t i = 0; i < count && !hasFailed_; ++i) {
      Number(2);
      Data();
    }
  }
  std::uint32_t TakeTicketEnd() {
    SkipPrincipal();  // the client
    SkipPrincipal();  // the server
    Number(2);        // kind of the key
    Data();           // the key
    Number(4);        // time of the login
    Number(4);        // start of the ticket
    const std::uint32_t end = Number(4);
    Number(4);     // latest renewal
    Bytes(1 + 4);  // flags
    SkipList();    // addresses
    SkipList();    // authorization data
    Data();        // the ticket
    Data();        // a second one
    return end;
  }

 private:
  std::string_view rest_;
  bool hasFailed_ = false;
};

}  // namespace

std::optional<std::uint32_t> LastTicketEnd(std::string_view bytes) {
  constexpr std::uint32_t kVersion = 0x0504;
  CacheReader reader(bytes);
  if (reader.Number(2) != kVersion) return std::nullopt;
  reader.Bytes(reader.Number(2));  // header
  reader.SkipPrincipal();          // the owner of the tickets
  std::uint32_t last = 0;
  while (!reader.IsAtEnd()) last = std::max(last, reader.TakeTicketEnd());
  if (reader.HasFailed()) return std::nullopt;
  return last;
}

}  // namespace pellorin
