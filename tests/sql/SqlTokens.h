// The words of a Transact-SQL batch, as far as the test server needs to tell statements apart.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pellorin::tds {

// An error message of the server.
struct SqlError {
  int number = 0;
  std::string text;
  int severity = 16;
  std::string procedure = {};
};

struct SqlToken {
  enum class Kind { kWord, kQuotedName, kText, kWideText, kSign };
  Kind kind = Kind::kSign;
  std::string text;  // without its quotes, doubled ones undone
  int line = 1;

  bool IsName() const { return kind == Kind::kWord || kind == Kind::kQuotedName; }
  bool IsText() const { return kind == Kind::kText || kind == Kind::kWideText; }
  bool Is(std::string_view word) const;  // unquoted, in any letter case
};

// Without comments, blanks and a last ";". Throws SqlError for a quote or a comment that does not end, and
// for a line "GO", which is a command of query tools and no Transact-SQL.
std::vector<SqlToken> SqlTokens(std::string_view batch);

// A `pattern` is a statement in which "_" stands for any name. Returns that name, "" for a pattern without
// one, nothing when the statement is another.
std::optional<std::string> MatchStatement(const std::vector<SqlToken>& statement, std::string_view pattern);

SqlError SyntaxError(std::string_view near);

}  // namespace pellorin::tds
