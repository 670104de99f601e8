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
  kReply = 0x04,
  kAttention = 0x06,
  kTransaction = 0x0E,
  kLogin = 0x10,
  kPrelogin = 0x12,
};

struct Message {
  MessageType type = MessageType::kBatch;
  std::string body;  // of all its packets, without their headers
};

struct ProtocolError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Join and split packets.
std::optional<Message> ReadMessage(const LoopbackSocket& socket);  // nothing once the connection is closed
void WriteReply(const LoopbackSocket& socket, std::string_view reply);

struct Login {
  std::string user, password;
};

// A parameter of a remote call as received.
struct CallValue {
  std::string name;  // with "@"
  std::optional<std::string> value;
};

struct Call {
  std::string statement;
  std::vector<CallValue> values;  // of the parameters that the statement names
};

struct TransactionRequest {
  enum class Kind { kBegin = 5, kCommit = 7, kRollBack = 8 };
  Kind kind = Kind::kBegin;
  bool beginsAgain = false;
};

Login ParseLogin(std::string_view body);
std::string ParseBatch(std::string_view body);
Call ParseCall(std::string_view body);
TransactionRequest ParseTransaction(std::string_view body);

// An error message of the server.
struct SqlError {
  int number = 0;
  std::string text;
};

struct ResultSet {
  enum class Column { kCount, kText };  // int, nvarchar(max)
  Column column = Column::kText;
  std::vector<std::optional<std::string>> rows;
};

}  // namespace pellorin::tds
