// The replies of the test server.
#pragma once

#include "base/Utf16.h"
#include "tests/sql/TdsMessages.h"

namespace pellorin::tds {

enum class Change : std::uint8_t { kDatabase = 1, kBegun = 8, kCommitted = 9, kRolledBack = 10 };

enum DoneFlags : std::uint8_t { kMoreResults = 0x01, kFailed = 0x02, kCounted = 0x10, kAttention = 0x20 };

// Builds a reply token by token.
class TokenWriter {
 public:
  const std::string& Bytes() const { return bytes_; }

  void TransactionChanged(Change change) {
    constexpr std::string_view kTransaction{"\x08\0\0\0\0\0\0\0\1", 9};  // identifies the open one
    constexpr std::string_view kNone{"\0", 1};
    TokenWriter body;
    body.Number(static_cast<std::uint8_t>(change), 1);
    body.bytes_ += change == Change::kBegun ? kTransaction : kNone;
    body.bytes_ += change == Change::kBegun ? kNone : kTransaction;
    Token(0xE3, body);
  }

  void DatabaseChanged(const std::string& now, const std::string& before) {
    TokenWriter body;
    body.Number(static_cast<std::uint8_t>(Change::kDatabase), 1);
    body.Text(now, 1);
    body.Text(before, 1);
    Token(0xE3, body);
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

  // One column without a name, nvarchar(max).
  void Result(const Rows& rows, bool hasMore) {
    constexpr std::string_view kCollation{"\x09\x04\xD0\x00\x34",
                                          5};  // Latin 1, code page 1252, no letter case
    Number(0x81, 1);
    Number(1, 2);  // columns
    Number(0, 4);  // no type of the user's
    Number(1, 2);  // may be NULL
    Number(0xE7, 1);
    Number(0xFFFF, 2);  // of any length
    bytes_ += kCollation;
    Text("", 1);
    for (const std::string& row : rows) {
      const std::string wide = WideBytes(row);
      Number(0xD1, 1);
      Number(wide.size(), 8);
      if (!wide.empty()) Number(wide.size(), 4);
      bytes_ += wide;
      Number(0, 4);
    }
    Done(kCounted | (hasMore ? unsigned{kMoreResults} : 0u), rows.size());
  }

  void Done(unsigned flags = 0, std::size_t rows = 0) {
    Number(0xFD, 1);
    Number(flags, 2);
    Number(0, 2);
    Number(rows, 8);
  }

 private:
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

  void Note(std::uint8_t token, int number, std::uint64_t severity, std::string_view text) {
    TokenWriter body;
    body.Number(static_cast<std::uint64_t>(number), 4);
    body.Number(1, 1);  // state
    body.Number(severity, 1);
    body.Text(text, 2);
    body.Text("TESTSERVER", 1);
    body.Text("", 1);   // procedure
    body.Number(1, 4);  // line
    Token(token, body);
  }

  std::string bytes_;
};

}  // namespace pellorin::tds
