// The model's procedure sp_sendPLN: records its parameters instead of sending mail.
#include <algorithm>

#include "platform/AnsiText.h"
#include "platform/TextCase.h"
#include "platform/Utf8.h"
#include "tests/sql/TdsDatabase.h"

namespace pellorin::tds {
namespace {

// In the order in which parameters without a name are taken.
constexpr std::array<const char*, 8> kParameters{
    "recipients", "message", "query", "attachments", "copy_recipients", "blind_copy_recipients",
    "subject",    "queue"};

std::optional<std::size_t> ParameterIndex(std::string_view name) {
  const auto isName = [name](const char* parameter) { return EqualIgnoringCase(parameter, name); };
  const auto found = std::find_if(kParameters.begin(), kParameters.end(), isName);
  if (found == kParameters.end()) return {};
  return static_cast<std::size_t>(found - kParameters.begin());
}

// A literal without N is text of the server's code page: what has no place there becomes a question mark.
std::string NarrowLiteral(const std::string& text) {
  std::string narrow;
  for (std::size_t position = 0; position < text.size();) {
    const std::string character = text.substr(position, DecodeUtf8(text, position).length);
    narrow += Utf8ToAnsi(character) ? character : "?";
    position += character.size();
  }
  return narrow;
}

// Reads `name = value, …` behind the name of the procedure.
class ArgumentReader {
 public:
  ArgumentReader(const std::vector<SqlToken>& statement, const TdsDatabase::Values& values)
      : statement_(statement), values_(values) {}

  std::vector<CallValue> Arguments() {
    std::vector<CallValue> arguments;
    while (position_ < statement_.size()) {
      if (!arguments.empty()) TakeSign(",");
      arguments.push_back(Argument());
    }
    return arguments;
  }

 private:
  const SqlToken& Take() {
    if (position_ == statement_.size()) throw SyntaxError(statement_.back().text);
    return statement_[position_++];
  }

  void TakeSign(const char* sign) {
    const SqlToken& token = Take();
    if (token.kind != SqlToken::Kind::kSign || token.text != sign) throw SyntaxError(token.text);
  }

  CallValue Argument() {
    CallValue argument;
    if (position_ + 1 < statement_.size() && statement_[position_ + 1].text == "=") {
      argument.name = Take().text;
      TakeSign("=");
    }
    const SqlToken& token = Take();
    if (token.IsText()) {
      argument.value = token.kind == SqlToken::Kind::kText ? NarrowLiteral(token.text) : token.text;
    } else if (token.text.starts_with("@")) {
      const auto found = values_.find(FoldCase(token.text));
      if (found == values_.end())
        throw SqlError{137, "Must declare the scalar variable \"" + token.text + "\".", 15};
      argument.value = found->second;
    } else if (!token.Is("NULL")) {
      throw SyntaxError(token.text);
    }
    return argument;
  }

  const std::vector<SqlToken>& statement_;
  const TdsDatabase::Values& values_;
  std::size_t position_ = 2;  // behind EXEC and the name
};

}  // namespace

Outcome TdsDatabase::RunProcedure(TdsSession& session, const std::vector<SqlToken>& statement,
                                  const Values& values) {
  if (statement.size() < 2 || !statement[1].IsName()) throw SyntaxError(statement.back().text);
  if (!EqualIgnoringCase(statement[1].text, "sp_sendPLN"))
    throw SqlError{2812, "Could not find stored procedure '" + statement[1].text + "'."};
  return SendMail(session, ArgumentReader(statement, values).Arguments());
}

Outcome TdsDatabase::SendMail(TdsSession& session, const std::vector<CallValue>& arguments) {
  if (!Read(session).procedure) throw SqlError{2812, "Could not find stored procedure 'sp_sendPLN'."};
  Mail mail;
  std::array<bool, kParameterCount> given{};
  for (std::size_t position = 0; position < arguments.size(); ++position) {
    const CallValue& argument = arguments[position];
    const auto index = argument.name.empty() ? position : ParameterIndex(argument.name.substr(1));
    if (!index)
      throw SqlError{8145, argument.name + " is not a parameter for procedure sp_sendPLN.", 16, "sp_sendPLN"};
    if (*index >= kParameterCount)
      throw SqlError{8144, "Procedure or function sp_sendPLN has too many arguments specified.", 16,
                     "sp_sendPLN"};
    if (given[*index])
      throw SqlError{8143, "Parameter '" + argument.name + "' was supplied multiple times.", 16,
                     "sp_sendPLN"};
    given[*index] = true;
    mail[*index] = argument.value;
  }
  if (mail[0].value_or("").empty()) throw SqlError{50000, "No recipients were given.", 16, "sp_sendPLN"};
  Write(session).mail.push_back(std::move(mail));
  Outcome outcome;
  outcome.ranProcedure = true;
  return outcome;
}

Outcome TdsDatabase::ListMail(TdsSession& session, const std::string& column) {
  const auto index = ParameterIndex(column);
  if (!index) throw SqlError{207, "Invalid column name '" + column + "'."};
  ResultSet values{ColumnType::kLongText, kParameters[*index], {}};
  for (const Mail& mail : Read(session).mail) values.rows.push_back(mail[*index]);
  return {std::move(values), {}};
}

}  // namespace pellorin::tds
