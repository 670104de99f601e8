// How a conversation begins.
#include <algorithm>

#include "tests/sql/TdsConnection.h"

namespace pellorin::tds {

// Version, and encryption "not supported": a client that does not insist goes on in clear.
void TdsConnection::AnswerPrelogin() {
  constexpr std::string_view kOptions{"\x00\x00\x0B\x00\x06\x01\x00\x11\x00\x01\xFF", 11};
  constexpr std::string_view kValues{"\x10\x00\x03\xE8\x00\x00\x02", 7};
  stream_.Write(std::string(kOptions) + std::string(kValues));
}

std::optional<SqlError> TdsConnection::CheckLogin(const Login& login) {
  if (login.isTrusted) {
    return SqlError{18452,
                    "Login failed. The login is from an untrusted domain and cannot be used with Integrated "
                    "authentication.",
                    14};
  }
  const SqlError refused{18456, "Login failed for user '" + login.user + "'.", 14};
  if (!journal_.Accepts(login.user, login.password)) return refused;
  if (login.database.empty()) return {};
  if (const auto name = database_.NameOf(login.database)) {
    session_.database = *name;
    return {};
  }
  return SqlError{
      4060, "Cannot open database \"" + login.database + "\" requested by the login. The login failed.", 11};
}

void TdsConnection::AnswerLogin(const Login& login) {
  TokenWriter reply;
  if (const auto error = CheckLogin(login)) {
    SendError(reply, *error);
    isOpen_ = false;
    return;
  }
  const std::string before = std::to_string(stream_.PacketSize());
  reply.DatabaseChanged(session_.database, "master");
  reply.CollationChanged();
  reply.ChangeText(Change::kLanguage, "us_english", "");
  reply.Info(5703, "Changed language setting to us_english.");
  reply.LoginAcknowledged();
  const std::size_t packetSize = std::clamp<std::size_t>(login.packetSize, 512, 32767);
  reply.ChangeText(Change::kPacketSize, std::to_string(packetSize), before);
  reply.Done(End::kStatement, {});
  stream_.Write(reply.Bytes());
  stream_.SetPacketSize(packetSize);
}

}  // namespace pellorin::tds
