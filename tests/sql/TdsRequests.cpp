#include "tests/sql/TdsRequests.h"

#include <array>

#include "platform/TextCase.h"
#include "tests/sql/SqlTokens.h"

namespace pellorin::tds {
namespace {

constexpr std::size_t kLoginFields = 36;  // offset and length of each text, in the order of LoginField
enum class LoginField : std::size_t { kHost, kUser, kPassword, kProgram, kServer, kDatabase = 8 };
constexpr std::size_t kTrustedTicket = 78;

std::string_view At(std::string_view body, std::size_t offset) {
  if (offset > body.size()) throw ProtocolError("an offset beyond the end of a login");
  return body.substr(offset);
}

std::string_view LoginBytes(std::string_view body, LoginField field) {
  ByteReader place(At(body, kLoginFields + 4 * static_cast<std::size_t>(field)));
  const std::uint64_t offset = place.Number(2);
  return ByteReader(At(body, offset)).Bytes(2 * place.Number(2));
}

// Each byte crosses the wire with its halves swapped, then masked.
std::string Unscramble(std::string_view scrambled) {
  std::string bytes;
  for (const char character : scrambled) {
    const unsigned byte = static_cast<unsigned char>(character) ^ 0xA5u;
    bytes += static_cast<char>((byte << 4 | byte >> 4) & 0xFF);
  }
  return bytes;
}

std::string TakeValue(std::vector<CallValue>& values) {
  if (values.empty()) throw ProtocolError("a call with too few parameters");
  const std::string value = values.front().value.value_or("");
  values.erase(values.begin());
  return value;
}

}  // namespace

Login ParseLogin(std::string_view body) {
  const auto text = [body](LoginField field) { return Utf8FromUtf16(LoginBytes(body, field)); };
  Login login;
  login.host = text(LoginField::kHost);
  login.user = text(LoginField::kUser);
  login.password = Utf8FromUtf16(Unscramble(LoginBytes(body, LoginField::kPassword)));
  login.program = text(LoginField::kProgram);
  login.server = text(LoginField::kServer);
  login.database = text(LoginField::kDatabase);
  login.packetSize = ByteReader(At(body, 8)).Number(4);
  ByteReader ticket(At(body, kTrustedTicket));
  ticket.Number(2);
  login.isTrusted = ticket.Number(2) > 0;
  return login;
}

std::string ParseBatch(std::string_view body) {
  ByteReader reader(body);
  reader.SkipHeaders();
  return reader.RestAsText();
}

Call ParseCall(std::string_view body) {
  ByteReader reader(body);
  reader.SkipHeaders();
  Call call;
  constexpr std::uint64_t kByNumber = 0xFFFF;
  constexpr std::uint64_t kExecuteSql = 10;
  if (reader.Number(2) != kByNumber || reader.Number(2) != kExecuteSql)
    throw ProtocolError("a call of another procedure than sp_executesql");
  reader.Number(2);  // options
  while (!reader.IsAtEnd()) call.values.push_back(reader.Parameter());
  call.statement = TakeValue(call.values);
  if (!call.values.empty()) call.declarations = TakeValue(call.values);
  return call;
}

TransactionRequest ParseTransaction(std::string_view body) {
  ByteReader reader(body);
  reader.SkipHeaders();
  const std::uint64_t kind = reader.Number(2);
  if (kind == 5) return {};
  if (kind != 7 && kind != 8) throw ProtocolError("the unknown transaction request " + std::to_string(kind));
  TransactionRequest request{static_cast<TransactionRequest::Kind>(kind), false};
  reader.Text(reader.Number(1));  // name
  request.beginsAgain = (reader.Number(1) & 1) != 0;
  return request;
}

std::map<std::string, std::optional<std::string>> NamedValues(const std::string& declarations,
                                                              const std::vector<CallValue>& values) {
  std::vector<std::string> names;
  for (const SqlToken& token : SqlTokens(declarations))
    if (token.text.starts_with("@")) names.push_back(token.text);
  std::map<std::string, std::optional<std::string>> named;
  for (std::size_t position = 0; position < values.size(); ++position) {
    const CallValue& value = values[position];
    if (value.name.empty() && position >= names.size()) throw ProtocolError("more values than declared");
    named[FoldCase(value.name.empty() ? names[position] : value.name)] = value.value;
  }
  return named;
}

}  // namespace pellorin::tds
