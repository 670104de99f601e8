#include "tests/sql/TdsProtocol.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>

namespace pellorin::tds {
namespace {

constexpr std::size_t kPacketSize = 4096;  // with its header
constexpr std::size_t kHeaderSize = 8;
constexpr std::uint8_t kEndOfMessage = 0x01;

bool ReadBytes(int descriptor, char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t count = ::recv(descriptor, bytes, size, 0);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace

std::optional<Message> ReadMessage(int descriptor) {
  Message message;
  while (true) {
    std::array<char, kHeaderSize> header{};
    if (!ReadBytes(descriptor, header.data(), header.size())) return {};
    const auto byteAt = [&header](std::size_t index) { return static_cast<std::uint8_t>(header[index]); };
    const std::size_t size = byteAt(2) * 256u + byteAt(3);
    if (size < kHeaderSize) throw ProtocolError("a packet shorter than its header");
    message.type = static_cast<MessageType>(byteAt(0));
    const std::size_t start = message.body.size();
    message.body.resize(start + size - kHeaderSize);
    if (!ReadBytes(descriptor, message.body.data() + start, size - kHeaderSize)) return {};
    if ((byteAt(1) & kEndOfMessage) != 0) return message;
  }
}

// A client that has gone is noticed by the next read.
void WriteReply(int descriptor, std::string_view reply) {
  std::string packets;
  std::uint8_t number = 0;
  do {
    const std::string_view body = reply.substr(0, kPacketSize - kHeaderSize);
    reply.remove_prefix(body.size());
    const std::size_t size = body.size() + kHeaderSize;
    packets += static_cast<char>(MessageType::kReply);
    packets += static_cast<char>(reply.empty() ? kEndOfMessage : 0);
    packets += {static_cast<char>(size >> 8), static_cast<char>(size & 0xFF), 0, 0};
    packets += {static_cast<char>(++number), 0};
    packets += body;
  } while (!reply.empty());
  for (std::string_view rest = packets; !rest.empty();) {
    const ssize_t count = ::send(descriptor, rest.data(), rest.size(), MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace pellorin::tds
