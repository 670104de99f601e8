#include "tests/sql/SqlTokens.h"

#include <algorithm>

#include "platform/TextCase.h"

namespace pellorin::tds {
namespace {

using Kind = SqlToken::Kind;

bool IsBlank(char character) {
  return std::string_view(" \t\r\n\f\v").find(character) != std::string::npos;
}

bool IsWordCharacter(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
         (byte >= 'a' && byte <= 'z') || std::string_view("_@#$").find(character) != std::string::npos;
}

class Scanner {
 public:
  explicit Scanner(std::string_view batch) : batch_(batch) {}

  std::vector<SqlToken> Tokens() {
    while (SkipBlanksAndComments()) tokens_.push_back(Next());
    return std::move(tokens_);
  }

 private:
  bool At(std::string_view text) const { return batch_.substr(position_).starts_with(text); }

  void Advance(std::size_t count) {
    const std::string_view passed = batch_.substr(position_, count);
    line_ += static_cast<int>(std::count(passed.begin(), passed.end(), '\n'));
    position_ += passed.size();
  }

  bool SkipBlanksAndComments() {
    while (position_ < batch_.size()) {
      if (At("--")) {
        Advance(std::min(batch_.find('\n', position_), batch_.size()) - position_);
      } else if (At("/*")) {
        SkipComment();
      } else if (IsBlank(batch_[position_])) {
        Advance(1);
      } else {
        return true;
      }
    }
    return false;
  }

  void SkipComment() {
    int depth = 0;
    do {
      if (position_ >= batch_.size()) throw SqlError{113, "Missing end comment mark '*/'.", 15};
      const bool opens = At("/*");
      const bool closes = !opens && At("*/");
      depth += opens ? 1 : closes ? -1 : 0;
      Advance(opens || closes ? 2 : 1);
    } while (depth > 0);
  }

  SqlToken Next() {
    const int line = line_;
    if (At("N'") || At("n'")) {
      Advance(1);
      return {Kind::kWideText, Quoted('\''), line};
    }
    switch (batch_[position_]) {
      case '\'':
        return {Kind::kText, Quoted('\''), line};
      case '"':
        return {Kind::kQuotedName, Quoted('"'), line};
      case '[':
        return {Kind::kQuotedName, Quoted(']'), line};
      default:
        break;
    }
    const std::size_t start = position_;
    while (position_ < batch_.size() && IsWordCharacter(batch_[position_])) Advance(1);
    if (position_ > start) return {Kind::kWord, std::string(batch_.substr(start, position_ - start)), line};
    Advance(1);
    return {Kind::kSign, std::string(1, batch_[start]), line};
  }

  std::string Quoted(char end) {
    Advance(1);
    const std::size_t start = position_;
    std::string text;
    while (position_ < batch_.size()) {
      const char character = batch_[position_];
      Advance(1);
      if (character == end) {
        if (position_ == batch_.size() || batch_[position_] != end) return text;
        Advance(1);
      }
      text += character;
    }
    const std::string rest(batch_.substr(start));
    throw SqlError{105, "Unclosed quotation mark after the character string '" + rest + "'.", 15};
  }

  std::string_view batch_;
  std::size_t position_ = 0;
  int line_ = 1;
  std::vector<SqlToken> tokens_;
};

}  // namespace

bool SqlToken::Is(std::string_view word) const {
  return kind == Kind::kWord && EqualIgnoringCase(text, word);
}

SqlError SyntaxError(std::string_view near) {
  return {102, "Incorrect syntax near '" + std::string(near) + "'.", 15};
}

std::vector<SqlToken> SqlTokens(std::string_view batch) {
  std::vector<SqlToken> tokens = Scanner(batch).Tokens();
  for (std::size_t index = 0; index < tokens.size(); ++index) {
    const bool first = index == 0 || tokens[index - 1].line != tokens[index].line;
    const bool last = index + 1 == tokens.size() || tokens[index + 1].line != tokens[index].line;
    if (first && last && tokens[index].Is("GO")) throw SyntaxError(tokens[index].text);
  }
  while (!tokens.empty() && tokens.back().kind == Kind::kSign && tokens.back().text == ";") tokens.pop_back();
  return tokens;
}

std::optional<std::string> MatchStatement(const std::vector<SqlToken>& statement, std::string_view pattern) {
  const std::vector<SqlToken> expected = SqlTokens(pattern);
  if (statement.size() != expected.size()) return {};
  std::string name;
  for (std::size_t index = 0; index < expected.size(); ++index) {
    const SqlToken& token = statement[index];
    if (expected[index].Is("_") && token.IsName()) {
      name = token.text;
    } else if (token.IsName() != expected[index].IsName() || token.IsText() != expected[index].IsText() ||
               !EqualIgnoringCase(token.text, expected[index].text)) {
      return {};
    }
  }
  return name;
}

}  // namespace pellorin::tds
