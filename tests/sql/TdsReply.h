// The replies of the test server.
#pragma once

#include "base/Utf16.h"
#include "tests/sql/TdsProtocol.h"

namespace pellorin::tds {

enum class Change : std::uint8_t { kDatabase = 1, kBegun = 8, kCommitted = 9, kRolledBack = 10 };

enum class End : std::uint8_t { kStatement = 0xFD, kCall = 0xFE };
enum EndFlags : std::uint8_t { kMoreResults = 0x01, kFailed = 0x02, kCounted = 0x10, kAttention = 0x20 };

// Builds a reply token by token.
class TokenWriter {
 public:
  const std::string& Bytes() const { return bytes_; }

  void Changed(Change change, std::string_view now, std::string_view before) {
    TokenWriter body;
    body.Number(static_cast<std::uint8_t>(change), 1);
    for (const std::string_view value : {now, before}) {
      if (change == Change::kDatabase) {
        body.Text(value, 1);
      } else {
        body.Number(value.size(), 1);
        body.bytes_ += value;
      }
    }
    Token(0xE3, body);
  }

  void DatabaseChanged(const std::string& now, const std::string& before) {
    Changed(Change::kDatabase, now, before);
    Note(0xAB, 5701, 0, "Changed database context to '" + now + "'.");
  }

  void Error(const SqlError& error) { Note(0xAA, error.number, 16, error.text); }

  void LoginAcknowledged() {
    TokenWriter body;
    body.Number(1, 1);           // Transact-SQL
    body.Number(0x04000074, 4);  // version 7.4, the only number that crosses the wire big end first
    body.Text("Test Server", 1);
    body.Number(0xE8030010, 4);  // 16.0.1000
    Token(0xAD, body);
  }

  // One column without a name that may be NULL.
  void Result(const ResultSet& result, bool hasMore) {
    Number(0x81, 1);
    Number(1, 2);  // columns
    Number(0, 4);  // no type of the user's
    Number(1, 2);  // may be NULL
    if (result.column == ResultSet::Column::kCount) {
      Number(kIntType, 1);
      Number(4, 1);
    } else {
      Number(kNvarcharType, 1);
      Number(kUnlimited, 2);
      bytes_ += kCollation;
    }
    Text("", 1);
    for (const auto& row : result.rows) Value(result.column, row);
    Done(End::kStatement, kCounted | (hasMore ? unsigned{kMoreResults} : 0u), result.rows.size());
  }

  void ReturnStatus(std::uint32_t status) {
    Number(0x79, 1);
    Number(status, 4);
  }

  void Done(End end, unsigned flags = 0, std::size_t rows = 0) {
    Number(static_cast<std::uint8_t>(end), 1);
    Number(flags, 2);
    Number(0, 2);
    Number(rows, 8);
  }

 private:
  // Latin 1, code page 1252, no letter case.
  static constexpr std::string_view kCollation{"\x09\x04\xD0\x00\x34", 5};
  static constexpr std::uint8_t kIntType = 0x26, kNvarcharType = 0xE7;
  static constexpr std::uint64_t kUnlimited = 0xFFFF;
  static constexpr std::uint64_t kNull = ~0ull;

  static std::string WideBytes(std::string_view text) {
    std::string bytes;
    for (const char16_t unit : ToUtf16(text)) {
      bytes += static_cast<char>(unit & 0xFF);
      bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
  }

  void Number(std::uint64_t value, std::size_t size) {
    for (; size > 0; --size, value >>= 8) bytes_ += static_cast<char>(value & 0xFF);
  }

  // Preceded by its length.
  void Text(std::string_view text, std::size_t lengthSize) {
    const std::string wide = WideBytes(text);
    Number(wide.size() / 2, lengthSize);
    bytes_ += wide;
  }

  void Token(std::uint8_t token, const TokenWriter& body) {
    Number(token, 1);
    Number(body.bytes_.size(), 2);
    bytes_ += body.bytes_;
  }

  void Note(std::uint8_t token, int number, int severity, std::string_view text) {
    TokenWriter body;
    body.Number(static_cast<std::uint64_t>(number), 4);
    body.Number(1, 1);  // state
    body.Number(static_cast<std::uint64_t>(severity), 1);
    body.Text(text, 2);
    body.Text("TESTSERVER", 1);
    body.Text("", 1);   // procedure
    body.Number(1, 4);  // line
    Token(token, body);
  }

  void Value(ResultSet::Column column, const std::optional<std::string>& value) {
    Number(0xD1, 1);
    if (column == ResultSet::Column::kCount) {
      Number(4, 1);
      Number(std::stoul(value.value()), 4);
    } else if (!value) {
      Number(kNull, 8);
    } else {
      const std::string wide = WideBytes(*value);
      Number(wide.size(), 8);
      if (!wide.empty()) Number(wide.size(), 4);
      bytes_ += wide;
      Number(0, 4);
    }
  }

  std::string bytes_;
};

}  // namespace pellorin::tds
