// The words of a Transact-SQL batch, as far as the test server needs to tell statements apart.
#pragma once

#include <cctype>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/TextCase.h"
#include "tests/sql/TdsProtocol.h"

namespace pellorin::tds {

struct SqlToken {
  enum class Kind { kName, kText, kSign };
  Kind kind = Kind::kSign;
  std::string text;  // without its quotes, doubled ones undone
};

class SqlScanner {
 public:
  explicit SqlScanner(std::string_view batch) : rest_(batch) {}

  // Without comments and blanks. Throws SqlError for a quote or a comment that does not end.
  std::vector<SqlToken> Tokens() {
    std::vector<SqlToken> tokens;
    while (SkipBlanksAndComments()) tokens.push_back(Next());
    return tokens;
  }

 private:
  std::string Take(std::size_t count) {
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(taken.size());
    return std::string(taken);
  }

  bool SkipBlanksAndComments() {
    while (!rest_.empty()) {
      if (rest_.starts_with("--")) {
        Take(rest_.find('\n'));
      } else if (rest_.starts_with("/*")) {
        const std::size_t end = rest_.find("*/", 2);
        if (end == std::string::npos) throw SqlError{113, "Missing end comment mark '*/'."};
        Take(end + 2);
      } else if (std::string_view(" \t\r\n\f\v").find(rest_.front()) != std::string::npos) {
        Take(1);
      } else {
        return true;
      }
    }
    return false;
  }

  SqlToken Next() {
    if (rest_.starts_with("N'")) Take(1);
    if (rest_.starts_with('\'')) return {SqlToken::Kind::kText, Quoted('\'')};
    if (rest_.starts_with('"')) return {SqlToken::Kind::kName, Quoted('"')};
    if (rest_.starts_with('[')) return {SqlToken::Kind::kName, Quoted(']')};
    std::size_t length = 0;
    while (length < rest_.size() && IsWordCharacter(rest_[length])) ++length;
    if (length > 0) return {SqlToken::Kind::kName, Take(length)};
    return {SqlToken::Kind::kSign, Take(1)};
  }

  static bool IsWordCharacter(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x80 || std::isalnum(byte) != 0 ||
           std::string_view("_@#$").find(character) != std::string::npos;
  }

  std::string Quoted(char quote) {
    std::string text;
    Take(1);
    while (!rest_.empty()) {
      const std::string character = Take(1);
      const bool isQuote = character[0] == quote;
      if (isQuote && !rest_.starts_with(quote)) return text;
      if (isQuote) Take(1);
      text += character;
    }
    throw SqlError{105, "Unclosed quotation mark after the character string ''."};
  }

  std::string_view rest_;
};

inline SqlError SyntaxError(const std::string& near) {
  return {102, "Incorrect syntax near '" + near + "'."};
}

// A `pattern` is a statement in which "_" stands for any name and a last "…" for anything. Returns that name,
// "" for a pattern without one, nothing when the statement is another.
inline std::optional<std::string> MatchStatement(const std::vector<SqlToken>& statement,
                                                 std::string_view pattern) {
  const std::vector<SqlToken> expected = SqlScanner(pattern).Tokens();
  std::string name;
  for (std::size_t index = 0; index < expected.size(); ++index) {
    const std::string& text = expected[index].text;
    if (text == "…") return name;
    if (index == statement.size() || statement[index].kind != expected[index].kind) return {};
    if (text == "_") name = statement[index].text;
    if (text != "_" && !EqualIgnoringCase(text, statement[index].text)) return {};
  }
  if (statement.size() > expected.size()) return {};
  return name;
}

}  // namespace pellorin::tds
