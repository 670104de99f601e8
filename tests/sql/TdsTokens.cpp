// The values inside messages: parameters of requests, tokens of replies.
#include <algorithm>

#include "platform/AnsiText.h"
#include "tests/sql/TdsProtocol.h"

namespace pellorin::tds {
namespace {

constexpr std::string_view kCollation{"\x09\x04\xD0\x00\x34", 5};  // Latin 1, code page 1252, no letter case
constexpr std::size_t kHeadersSize = 22;       // one header: the transaction that a request belongs to
constexpr std::size_t kLongestMessage = 4094;  // bytes of an error's text, as servers cut it
constexpr std::uint64_t kUnlimited = 0xFFFF;
constexpr std::uint64_t kNull = ~0ull;

constexpr std::uint8_t kIntType = 0x26, kBitType = 0x68, kTextType = 0x23, kNtextType = 0x63;
constexpr std::uint8_t kVarcharType = 0xA7, kCharType = 0xAF, kNvarcharType = 0xE7, kNcharType = 0xEF;

const char* TypeName(std::uint64_t type) {
  switch (type) {
    case kTextType:
      return "text";
    case kNtextType:
      return "ntext";
    case kVarcharType:
      return "varchar";
    case kCharType:
      return "char";
    case kNvarcharType:
      return "nvarchar";
    case kNcharType:
      return "nchar";
    default:
      throw ProtocolError("a parameter of the unknown type " + std::to_string(type));
  }
}

bool IsWide(std::uint64_t type) {
  return type == kNtextType || type == kNvarcharType || type == kNcharType;
}

}  // namespace

std::uint64_t ByteReader::Number(std::size_t size) {
  std::uint64_t value = 0;
  const std::string_view bytes = Bytes(size);
  for (std::size_t index = size; index-- > 0;) value = value << 8 | static_cast<std::uint8_t>(bytes[index]);
  return value;
}

std::string_view ByteReader::Bytes(std::size_t size) {
  if (size > rest_.size()) throw ProtocolError("a message shorter than it says");
  const std::string_view bytes = rest_.substr(0, size);
  rest_.remove_prefix(size);
  return bytes;
}

std::string ByteReader::Text(std::size_t characters) {
  return Utf8FromUtf16(Bytes(characters * 2));
}

void ByteReader::SkipHeaders() {
  if (Number(4) != kHeadersSize) throw ProtocolError("a request without the header of its transaction");
  Bytes(kHeadersSize - 4);
}

std::optional<std::string> ByteReader::Chunks() {
  if (Number(8) == kNull) return {};
  std::string value;
  while (const std::uint64_t size = Number(4)) value += Bytes(size);
  return value;
}

std::optional<std::string> ByteReader::ShortValue() {
  const std::uint64_t size = Number(2);
  if (size == 0xFFFF) return {};
  return std::string(Bytes(size));
}

std::optional<std::string> ByteReader::LongValue() {
  const std::uint64_t size = Number(4);
  if (size == 0xFFFFFFFF) return {};
  return std::string(Bytes(size));
}

CallValue ByteReader::Parameter() {
  CallValue parameter;
  parameter.name = Text(Number(1));
  Number(1);  // by reference or not
  const std::uint64_t type = Number(1);
  if (type == kIntType || type == kBitType) {
    parameter.type = type == kIntType ? "int" : "bit";
    Number(1);
    if (const std::uint64_t size = Number(1)) parameter.value = std::to_string(Number(size));
    return parameter;
  }
  parameter.type = TypeName(type);
  if (type == kTextType || type == kNtextType) {
    Bytes(4 + kCollation.size());
    parameter.value = LongValue();
  } else {
    const std::uint64_t limit = Number(2);
    Bytes(kCollation.size());
    const std::uint64_t characters = IsWide(type) ? limit / 2 : limit;
    parameter.type += "(" + (limit == kUnlimited ? "max" : std::to_string(characters)) + ")";
    parameter.value = limit == kUnlimited ? Chunks() : ShortValue();
  }
  if (parameter.value)
    parameter.value = IsWide(type) ? Utf8FromUtf16(*parameter.value) : AnsiToUtf8(*parameter.value);
  return parameter;
}

void TokenWriter::Number(std::uint64_t value, std::size_t size) {
  for (; size > 0; --size, value >>= 8) bytes_ += static_cast<char>(value & 0xFF);
}

void TokenWriter::ShortText(std::string_view text) {
  const std::string wide = Utf16FromUtf8(text);
  if (wide.size() > 2 * 255) throw ProtocolError("a name longer than the protocol can carry");
  Number(wide.size() / 2, 1);
  bytes_ += wide;
}

void TokenWriter::ChangeText(Change change, std::string_view now, std::string_view before) {
  Number(0xE3, 1);
  Number(3 + Utf16FromUtf8(now).size() + Utf16FromUtf8(before).size(), 2);
  Number(static_cast<std::uint8_t>(change), 1);
  ShortText(now);
  ShortText(before);
}

void TokenWriter::ChangeBytes(Change change, std::string_view now, std::string_view before) {
  Number(0xE3, 1);
  Number(3 + now.size() + before.size(), 2);
  Number(static_cast<std::uint8_t>(change), 1);
  Number(now.size(), 1);
  bytes_ += now;
  Number(before.size(), 1);
  bytes_ += before;
}

void TokenWriter::DatabaseChanged(const std::string& now, const std::string& before) {
  ChangeText(Change::kDatabase, now, before);
  Info(5701, "Changed database context to '" + now + "'.");
}

void TokenWriter::CollationChanged() {
  ChangeBytes(Change::kCollation, kCollation, {});
}

void TokenWriter::Note(std::uint8_t token, std::uint32_t number, int severity, std::string_view text,
                       std::string_view procedure) {
  TokenWriter body;
  body.Number(number, 4);
  body.Number(1, 1);  // state
  body.Number(static_cast<std::uint64_t>(severity), 1);
  const std::string wide = Utf16FromUtf8(text).substr(0, kLongestMessage);
  body.Number(wide.size() / 2, 2);
  body.bytes_ += wide;
  body.ShortText("TESTSERVER");
  body.ShortText(procedure);
  body.Number(1, 4);  // line
  Number(token, 1);
  Number(body.bytes_.size(), 2);
  bytes_ += body.bytes_;
}

void TokenWriter::LoginAcknowledged() {
  TokenWriter body;
  body.Number(1, 1);           // Transact-SQL
  body.Number(0x04000074, 4);  // version 7.4, the only number that crosses the wire big end first
  body.ShortText("Test Server");
  body.Number(0xE8030010, 4);  // 16.0.1000
  Number(0xAD, 1);
  Number(body.bytes_.size(), 2);
  bytes_ += body.bytes_;
}

void TokenWriter::Column(ColumnType type, std::string_view name) {
  Number(0x81, 1);
  Number(1, 2);  // columns
  Number(0, 4);  // no type of the user's
  Number(1, 2);  // may be NULL
  if (type == ColumnType::kCount) {
    Number(kIntType, 1);
    Number(4, 1);
  } else {
    Number(kNvarcharType, 1);
    Number(type == ColumnType::kName ? 256 : kUnlimited, 2);
    bytes_ += kCollation;
  }
  ShortText(name);
}

void TokenWriter::Row(ColumnType type, const std::optional<std::string>& value) {
  Number(0xD1, 1);
  if (type == ColumnType::kCount) {
    Number(4, 1);
    Number(std::stoul(value.value()), 4);
    return;
  }
  const std::string wide = Utf16FromUtf8(value.value_or(""));
  if (type == ColumnType::kName) {
    Number(value ? wide.size() : 0xFFFF, 2);
    bytes_ += wide;
  } else if (!value) {
    Number(kNull, 8);
  } else {
    Number(wide.size(), 8);
    if (!wide.empty()) Number(wide.size(), 4);
    bytes_ += wide;
    Number(0, 4);
  }
}

void TokenWriter::ReturnStatus(std::uint32_t status) {
  Number(0x79, 1);
  Number(status, 4);
}

void TokenWriter::Done(End end, EndFlags flags, std::optional<std::uint64_t> rows) {
  Number(static_cast<std::uint8_t>(end), 1);
  Number((flags.more ? 0x01u : 0u) | (flags.error ? 0x02u : 0u) | (rows ? 0x10u : 0u) |
             (flags.attention ? 0x20u : 0u),
         2);
  Number(0, 2);
  Number(rows.value_or(0), 8);
}

}  // namespace pellorin::tds
