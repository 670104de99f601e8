// The packets are those of the tabular data stream protocol, where this step is called PRELOGIN.
#include "sql/Prelogin.h"

#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/StreamQuestion.h"
#include "sql/ServerAddress.h"
#include "sql/SqlConnection.h"

namespace pellorin {
namespace {

constexpr std::size_t kHeaderSize = 8;  // type, flags, size of the packet (two bytes), four more
constexpr std::uint8_t kReply = 0x04;
constexpr std::uint8_t kLastPacket = 0x01;
constexpr std::size_t kLongestAnswer = 65536;

constexpr std::uint8_t kEncryption = 0x01;  // option
constexpr std::uint8_t kEndOfOptions = 0xFF;
constexpr std::uint8_t kNotSupported = 0x02;  // its value; 0, 1 and 3 are offers
constexpr std::uint8_t kRequired = 0x03;

// Version (of 6 bytes) and encryption ("only if you insist"), as kind, place and size, then their values.
constexpr std::string_view kQuestion{
    "\x12\x01\x00\x1A\x00\x00\x01\x00"
    "\x00\x00\x0B\x00\x06\x01\x00\x11\x00\x01\xFF"
    "\x00\x00\x00\x00\x00\x00\x00",
    26};

std::size_t ByteAt(std::string_view bytes, std::size_t index) {
  return static_cast<std::uint8_t>(bytes[index]);
}

struct Reply {
  bool isWhole = false;
  bool isForeign = false;  // not from a SQL Server
  std::string options = {};
};

// Joins the packets received so far.
Reply ReadReply(std::string_view bytes) {
  Reply reply;
  if (bytes.size() > kLongestAnswer) reply.isForeign = true;
  while (!bytes.empty() && !reply.isWhole && !reply.isForeign) {
    if (ByteAt(bytes, 0) != kReply) reply.isForeign = true;
    if (bytes.size() < kHeaderSize) break;
    const std::size_t size = ByteAt(bytes, 2) * 256 + ByteAt(bytes, 3);
    if (size < kHeaderSize) reply.isForeign = true;
    if (bytes.size() < size) break;
    reply.isWhole = (ByteAt(bytes, 1) & kLastPacket) != 0;
    if (!reply.isForeign) reply.options += bytes.substr(kHeaderSize, size - kHeaderSize);
    bytes.remove_prefix(size);
  }
  return reply;
}

// Nothing for options that no server sends.
std::optional<bool> EncryptionIn(std::string_view options) {
  constexpr std::size_t kEntrySize = 5;
  bool isOffered = false;
  for (std::size_t at = 0; at < options.size() && ByteAt(options, at) != kEndOfOptions; at += kEntrySize) {
    if (at + kEntrySize >= options.size()) return std::nullopt;
    const std::size_t place = ByteAt(options, at + 1) * 256 + ByteAt(options, at + 2);
    const std::size_t size = ByteAt(options, at + 3) * 256 + ByteAt(options, at + 4);
    if (place + size > options.size()) return std::nullopt;
    if (ByteAt(options, at) != kEncryption) continue;
    if (size != 1 || ByteAt(options, place) > kRequired) return std::nullopt;
    isOffered = ByteAt(options, place) != kNotSupported;
  }
  if (options.empty()) return std::nullopt;
  return isOffered;
}

std::string Problem(const NetworkAnswer& answer, const std::string& host, const std::string& port) {
  switch (answer.outcome) {
    case AskOutcome::Refused:
      return "Port " + port + " of " + host + " cannot be reached (" + answer.reason +
             "). Please check that SQL Server runs there, listens on this port and allows TCP/IP "
             "connections.";
    case AskOutcome::Silent:
      return host + " did not answer on port " + port +
             " in time. Please check the server's name and port, and that no firewall keeps it from "
             "answering.";
    case AskOutcome::Closed:
      return host + " closed the connection on port " + port +
             " without an answer. Please check that a SQL Server listens on this port.";
    default:
      return "The program that answers on port " + port + " of " + host +
             " is not a SQL Server. Please check the server's name and port.";
  }
}

}  // namespace

bool OffersEncryption(const std::string& host, std::uint16_t port, std::chrono::milliseconds patience) {
  const NetworkAnswer answer = AskByStream(host, port, kQuestion, patience, [](std::string_view bytes) {
    const Reply reply = ReadReply(bytes);
    return reply.isWhole || reply.isForeign;
  });
  if (answer.outcome == AskOutcome::UnknownHost) throw UnknownHost(host, answer.reason);
  const Reply reply = ReadReply(answer.bytes);
  if (answer.outcome == AskOutcome::Answered && !reply.isForeign)
    if (const auto isOffered = EncryptionIn(reply.options)) return *isOffered;
  throw SqlError(0, ErrorSource("Prelogin"), Problem(answer, host, std::to_string(port)));
}

}  // namespace pellorin
