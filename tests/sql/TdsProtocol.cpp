#include "tests/sql/TdsProtocol.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>

#include "platform/Utf8.h"

namespace pellorin::tds {
namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr std::uint8_t kEndOfMessage = 0x01;
constexpr std::uint8_t kIgnoreMessage = 0x02;

void AppendUtf16(std::string& bytes, std::uint32_t unit) {
  bytes += static_cast<char>(unit & 0xFF);
  bytes += static_cast<char>(unit >> 8);
}

}  // namespace

std::string Utf16FromUtf8(std::string_view text) {
  std::string bytes;
  for (std::size_t position = 0; position < text.size();) {
    const Utf8Character character = DecodeUtf8(text, position);
    if (character.length == 0) throw ProtocolError("a text of the model is no UTF-8");
    position += character.length;
    if (character.value < 0x10000) {
      AppendUtf16(bytes, character.value);
    } else {
      AppendUtf16(bytes, 0xD800 + ((character.value - 0x10000) >> 10));
      AppendUtf16(bytes, 0xDC00 + ((character.value - 0x10000) & 0x3FF));
    }
  }
  return bytes;
}

std::string Utf8FromUtf16(std::string_view bytes) {
  std::string text;
  ByteReader reader(bytes);
  while (!reader.IsAtEnd()) {
    auto value = static_cast<char32_t>(reader.Number(2));
    if (value >= 0xDC00 && value <= 0xDFFF) throw ProtocolError("half a character");
    if (value >= 0xD800 && value <= 0xDBFF) {
      const auto low = static_cast<char32_t>(reader.Number(2));
      if (low < 0xDC00 || low > 0xDFFF) throw ProtocolError("half a character");
      value = 0x10000 + ((value - 0xD800) << 10) + (low - 0xDC00);
    }
    AppendUtf8(text, value);
  }
  return text;
}

bool PacketStream::ReadBytes(char* bytes, std::size_t size) const {
  while (size > 0) {
    const ssize_t count = ::recv(descriptor_, bytes, size, 0);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

std::optional<Message> PacketStream::Read() {
  Message message;
  while (true) {
    std::array<char, kHeaderSize> header{};
    if (!ReadBytes(header.data(), header.size())) return {};
    const auto byteAt = [&header](std::size_t index) { return static_cast<std::uint8_t>(header[index]); };
    const std::size_t size = byteAt(2) * 256u + byteAt(3);
    if (size < kHeaderSize) throw ProtocolError("a packet shorter than its header");
    const auto type = static_cast<MessageType>(byteAt(0));
    // An attention may break off a message that is only half sent.
    if (type != message.type) message = {type, {}};
    const std::size_t start = message.body.size();
    message.body.resize(start + size - kHeaderSize);
    if (!ReadBytes(message.body.data() + start, size - kHeaderSize)) return {};
    if ((byteAt(1) & kIgnoreMessage) != 0) {
      message.body.clear();
    } else if ((byteAt(1) & kEndOfMessage) != 0) {
      return message;
    }
  }
}

// A client that has gone is noticed by the next read.
void PacketStream::Write(std::string_view reply) const {
  std::string packets;
  std::uint8_t number = 0;
  do {
    const std::string_view body = reply.substr(0, packetSize_ - kHeaderSize);
    reply.remove_prefix(body.size());
    const std::size_t size = body.size() + kHeaderSize;
    packets += static_cast<char>(MessageType::kReply);
    packets += static_cast<char>(reply.empty() ? kEndOfMessage : 0);
    packets += {static_cast<char>(size >> 8), static_cast<char>(size & 0xFF), 0, 0};
    packets += {static_cast<char>(++number), 0};
    packets += body;
  } while (!reply.empty());
  for (std::string_view rest = packets; !rest.empty();) {
    const ssize_t count = ::send(descriptor_, rest.data(), rest.size(), MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

bool PacketStream::IsReadableWithin(std::chrono::milliseconds time) const {
  pollfd descriptor{descriptor_, POLLIN, 0};
  return ::poll(&descriptor, 1, static_cast<int>(time.count())) > 0;
}

}  // namespace pellorin::tds
