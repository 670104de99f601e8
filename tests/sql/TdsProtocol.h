// What crosses the wire of the tabular data stream, version 7.4: packets, the values inside requests, and the
// tokens of replies. Text is UTF-8 on this side and UTF-16 on the wire.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

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

// Joins and splits packets. Reads no byte beyond the message asked for, so that waiting for the socket is
// waiting for the next message.
class PacketStream {
 public:
  explicit PacketStream(int descriptor) : descriptor_(descriptor) {}

  std::optional<Message> Read();  // nothing once the connection is closed
  void Write(std::string_view reply) const;
  bool IsReadableWithin(std::chrono::milliseconds time) const;
  void SetPacketSize(std::size_t size) { packetSize_ = size; }
  std::size_t PacketSize() const { return packetSize_; }

 private:
  bool ReadBytes(char* bytes, std::size_t size) const;

  int descriptor_;
  std::size_t packetSize_ = 4096;  // with its header of 8 bytes
};

// A parameter of a remote call as received.
struct CallValue {
  std::string name;  // with "@"; empty when given by position
  std::string type;  // as declared in Transact-SQL: nvarchar(4000), ntext, int
  std::optional<std::string> value;
  bool operator==(const CallValue&) const = default;
};

// Takes little-endian values off the front of a message. Every read beyond its end throws ProtocolError.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes) : rest_(bytes) {}

  bool IsAtEnd() const { return rest_.empty(); }
  std::uint64_t Number(std::size_t size);
  std::string_view Bytes(std::size_t size);
  std::string Text(std::size_t characters);
  std::string RestAsText() { return Text(rest_.size() / 2); }
  void SkipHeaders();  // of a request
  CallValue Parameter();

 private:
  std::optional<std::string> Chunks();  // a value of unlimited length
  std::optional<std::string> ShortValue();
  std::optional<std::string> LongValue();

  std::string_view rest_;
};

std::string Utf16FromUtf8(std::string_view text);
std::string Utf8FromUtf16(std::string_view bytes);

enum class ColumnType { kCount, kName, kLongText };  // int, nvarchar(128), nvarchar(max)

enum class Change : std::uint8_t {
  kDatabase = 1,
  kLanguage = 2,
  kPacketSize = 4,
  kCollation = 7,
  kBegun = 8,
  kCommitted = 9,
  kRolledBack = 10,
};

enum class End : std::uint8_t { kStatement = 0xFD, kCall = 0xFE, kStatementInCall = 0xFF };

struct EndFlags {
  bool more = false;  // results follow
  bool error = false;
  bool attention = false;
};

// Builds a reply token by token.
class TokenWriter {
 public:
  const std::string& Bytes() const { return bytes_; }

  void ChangeText(Change change, std::string_view now, std::string_view before);
  void ChangeBytes(Change change, std::string_view now, std::string_view before);
  void DatabaseChanged(const std::string& now, const std::string& before);
  void CollationChanged();
  void Info(std::uint32_t number, std::string_view text) { Note(0xAB, number, 0, text, {}); }
  void Error(std::uint32_t number, int severity, std::string_view text, std::string_view procedure) {
    Note(0xAA, number, severity, text, procedure);
  }
  void LoginAcknowledged();
  void Column(ColumnType type, std::string_view name);
  void Row(ColumnType type, const std::optional<std::string>& value);
  void ReturnStatus(std::uint32_t status);
  void Done(End end, EndFlags flags, std::optional<std::uint64_t> rows = {});

 private:
  void Number(std::uint64_t value, std::size_t size);
  void ShortText(std::string_view text);  // preceded by its length in one byte
  void Note(std::uint8_t token, std::uint32_t number, int severity, std::string_view text,
            std::string_view procedure);

  std::string bytes_;
};

}  // namespace pellorin::tds
