#include "tests/sql/TdsProtocol.h"

#include <array>

namespace pellorin::tds {
namespace {

constexpr std::size_t kPacketSize = 4096;  // with its header
constexpr std::size_t kHeaderSize = 8;
constexpr std::uint8_t kEndOfMessage = 0x01;

}  // namespace

std::optional<Message> ReadMessage(const LoopbackSocket& socket) {
  Message message;
  while (true) {
    std::array<char, kHeaderSize> header{};
    if (!socket.Read(header.data(), header.size())) return {};
    const auto byteAt = [&header](std::size_t index) { return static_cast<std::uint8_t>(header[index]); };
    const std::size_t size = byteAt(2) * 256u + byteAt(3);
    if (size < kHeaderSize) throw ProtocolError("a packet shorter than its header");
    message.type = static_cast<MessageType>(byteAt(0));
    const std::size_t start = message.body.size();
    message.body.resize(start + size - kHeaderSize);
    if (!socket.Read(message.body.data() + start, size - kHeaderSize)) return {};
    if ((byteAt(1) & kEndOfMessage) != 0) return message;
  }
}

void WriteReply(const LoopbackSocket& socket, std::string_view reply) {
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
  socket.Write(packets);
}

}  // namespace pellorin::tds
