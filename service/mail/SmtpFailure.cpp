#include "service/mail/SmtpFailure.h"

#include <array>
#include <cstddef>

#include "service/mail/SmtpReplyText.h"

namespace pellorin {
namespace {

std::string ServerName(const SmtpServer& server) {
  return "the mail server " + server.host + ", port " + std::to_string(server.port);
}

struct StepWords {
  const char* refused;  // the object of "refused"
  const char* awaited;  // the object of "no"
};

// In the order of SmtpStep.
constexpr std::array<StepWords, 8> kStepWords{{
    {"the connection", "greeting"},
    {"this machine's introduction (EHLO)", "answer to this machine's introduction (EHLO)"},
    {"to begin the encryption that it offers (STARTTLS)", "answer to STARTTLS"},
    {"the login", "answer to the login"},
    {"the sender ", "answer to the sender's address (MAIL)"},
    {"the recipient ", "answer to the recipient's address (RCPT)"},
    {"to take the message (DATA)", "answer to DATA"},
    {"the message", "answer to the message"},
}};

const StepWords& WordsOf(SmtpStep step) {
  return kStepWords.at(static_cast<std::size_t>(step));
}

std::string RefusedThing(const SmtpDialogue& dialogue, const MailMessage& message) {
  const std::string thing = WordsOf(dialogue.Step()).refused;
  if (dialogue.Step() == SmtpStep::Sender) return thing + message.from.address;
  if (dialogue.Step() == SmtpStep::Recipient)
    return thing + message.to.at(dialogue.RecipientsTaken()).address;
  return thing;
}

// The answer that the server still owed.
std::string AwaitedThing(const SmtpTransfer& transfer) {
  switch (transfer.Phase()) {
    case SmtpPhase::LookUp:
      return "answer of a name server about its address";
    case SmtpPhase::Connecting:
      return "answer";
    case SmtpPhase::Handshake:
      return "answer to the beginning of the encryption (TLS)";
    case SmtpPhase::Conversation:
      break;
  }
  const SmtpDialogue& dialogue = transfer.Dialogue();
  return dialogue.IsHelloRefused() ? "answer to this machine's simple introduction (HELO)"
                                   : WordsOf(dialogue.Step()).awaited;
}

std::string Reason(const SmtpTransfer& transfer, const SmtpServer& server) {
  const std::string& text = transfer.ResultText();
  if (transfer.Result() == CURLE_OPERATION_TIMEDOUT)
    return "No " + AwaitedThing(transfer) + " within " + std::to_string(server.timeout) +
           (server.timeout == 1 ? " second." : " seconds.");
  if (text.starts_with("response reading failed"))
    return "The server closed the connection instead of the " + AwaitedThing(transfer) + ".";
  return text;
}

bool CouldNotConnect(CURLcode code, bool isGreeted) {
  switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
      return true;
    case CURLE_OPERATION_TIMEDOUT:
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
      return !isGreeted;
    default:
      return false;
  }
}

std::string Kind(SmtpLogin login) {
  return login == SmtpLogin::Ntlm ? "NTLM" : "basic";
}

MailFailure ObstacleOf(const SmtpDialogue& dialogue, const SmtpServer& server) {
  const std::string name = ServerName(server);
  const std::string& offered = dialogue.OfferedLogins();
  switch (dialogue.Obstacle()) {
    case SmtpObstacle::EncryptionMisspelt:
      return {CURLE_USE_SSL_FAILED, "The encryption that " + name +
                                        " offers cannot be used: it does not spell STARTTLS in capital "
                                        "letters. Nothing was sent."};
    case SmtpObstacle::LoginMisspelt:
      return {CURLE_LOGIN_DENIED, "Login failed: the " + Kind(server.login) + " login that " + name +
                                      " offers cannot be used: it does not spell AUTH and the login's name "
                                      "in capital letters. Nothing was sent."};
    case SmtpObstacle::LoginOutdated:
      return {CURLE_LOGIN_DENIED, "Login failed: " + name +
                                      " asks for the first version of NTLM without encryption, which would "
                                      "give the password away. Nothing was sent."};
    case SmtpObstacle::LoginMissing:
    case SmtpObstacle::None:
      break;
  }
  return {CURLE_LOGIN_DENIED, "Login failed: " + name + " does not offer the " + Kind(server.login) +
                                  " login that is configured (it offers " +
                                  (offered.empty() ? "no login" : offered) + "). Nothing was sent."};
}

MailFailure RefusalOf(const SmtpTransfer& transfer, const SmtpServer& server, const MailMessage& message,
                      const std::string& doubt) {
  const SmtpDialogue& dialogue = transfer.Dialogue();
  const int code = dialogue.RefusalCode();
  std::string text = ServerName(server);
  text.front() = 'T';
  text += code >= 400 ? " refused " + RefusedThing(dialogue, message)
                      : " gave an unexpected " + AwaitedThing(transfer);
  text += ":" + ShownReply(dialogue.RefusalLines(), server.user, server.password);
  if (!dialogue.IsRefused()) text += "\r\n" + Reason(transfer, server);
  return {code >= 400 ? code : CURLE_WEIRD_SERVER_REPLY, text + (code >= 400 ? "" : doubt)};
}

}  // namespace

MailFailure FailureOf(const SmtpTransfer& transfer, const SmtpServer& server, const MailMessage& message) {
  const SmtpDialogue& dialogue = transfer.Dialogue();
  const CURLcode code = transfer.Result();
  const bool isOpen = dialogue.Step() == SmtpStep::Message;
  const std::string doubt = isOpen ? "\r\nIt is not known whether the message was delivered." : "";
  if (transfer.IsCancelled() && !dialogue.IsRefused())
    return {kMailCancelled, MailComponent::kCancelled + doubt};
  if (dialogue.Obstacle() != SmtpObstacle::None) return ObstacleOf(dialogue, server);
  if (dialogue.IsRefused() || dialogue.IsHelloRefused()) return RefusalOf(transfer, server, message, doubt);
  if (code == CURLE_LOGIN_DENIED)
    return {code, "Login failed: the dialogue with " + ServerName(server) +
                      " did not follow the rules of this kind of login. Nothing was sent."};
  const std::string reason = "\r\n" + Reason(transfer, server);
  if (CouldNotConnect(code, dialogue.IsGreeted()))
    return {code, "The transport failed to connect to " + ServerName(server) + "." + reason};
  if (code == CURLE_SSL_CONNECT_ERROR)
    return {code, "The encrypted connection (TLS) to " + ServerName(server) +
                      " could not be set up. Nothing was sent." + reason};
  return {code, "The connection to " + ServerName(server) + " failed." + reason + doubt};
}

}  // namespace pellorin
