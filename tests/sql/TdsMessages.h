// What crosses the wire of the tabular data stream, version 7.4: packets, and requests taken apart. Text is
// UTF-8 on this side and UTF-16 on the wire.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/posix/LoopbackSocket.h"

namespace pellorin::tds {

enum class MessageType : std::uint8_t {
  kBatch = 0x01,
  kCall = 0x03,
  kAttention = 0x06,
  kTransaction = 0x0E,
  kLogin = 0x10,
  kPrelogin = 0x12,
};

struct Message {
  MessageType type = MessageType::kBatch;
  std::string body;  // of all its packets, without their headers
};

// A client that speaks otherwise than this server understands.
struct ProtocolError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Join and split packets.
std::optional<Message> ReadMessage(const LoopbackSocket& socket);  // nothing once the connection is closed
void WriteReply(const LoopbackSocket& socket, std::string_view reply);

struct Login {
  std::string user, password;
};
Login ParseLogin(std::string_view body);

std::string ParseBatch(std::string_view body);

struct Call {
  std::string statement;  // with @P1, @P2, … for the values
  std::vector<std::string> values;
};
Call ParseCall(std::string_view body);

struct TransactionRequest {
  enum class Kind { kBegin = 5, kCommit = 7, kRollBack = 8 };
  Kind kind = Kind::kBegin;
  bool beginsAgain = false;
};
TransactionRequest ParseTransaction(std::string_view body);

// What the server answers with: an error, or the rows of one column of texts.
struct SqlError {
  int number = 0;
  std::string text;
};
using Rows = std::vector<std::string>;

}  // namespace pellorin::tds
