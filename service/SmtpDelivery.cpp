#include "service/SmtpDelivery.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <optional>

#include "platform/AnsiText.h"
#include "platform/Utf8.h"
#include "service/MailFailure.h"
#include "service/SmtpTransfer.h"

namespace pellorin {
namespace {

using Clock = std::chrono::steady_clock;

std::string ServerName(const SmtpServer& server) {
  return "the mail server " + server.host + ", port " + std::to_string(server.port);
}

// What the server refuses, as the object of "refused".
std::string RefusedThing(const SmtpDialogue& dialogue, const MailMessage& message) {
  switch (dialogue.Step()) {
    case SmtpStep::Greeting:
      return "the connection";
    case SmtpStep::Hello:
      return "this machine's introduction (EHLO)";
    case SmtpStep::StartTls:
      return "to begin the encryption that it offers (STARTTLS)";
    case SmtpStep::Login:
      return "the login";
    case SmtpStep::Sender:
      return "the sender " + message.from.address;
    case SmtpStep::Recipient:
      return "the recipient " + message.to.at(dialogue.RecipientsTaken()).address;
    case SmtpStep::Data:
      return "to take the message (DATA)";
    case SmtpStep::Message:
    case SmtpStep::Accepted:
      break;
  }
  return "the message";
}

// At which point the server fell silent.
const char* AwaitedThing(SmtpStep step) {
  switch (step) {
    case SmtpStep::Greeting:
      return "greeting";
    case SmtpStep::Hello:
      return "answer to this machine's introduction (EHLO)";
    case SmtpStep::StartTls:
      return "answer to STARTTLS";
    case SmtpStep::Login:
      return "answer to the login";
    case SmtpStep::Sender:
      return "answer to the sender's address (MAIL)";
    case SmtpStep::Recipient:
      return "answer to the recipient's address (RCPT)";
    case SmtpStep::Data:
      return "answer to DATA";
    case SmtpStep::Message:
    case SmtpStep::Accepted:
      break;
  }
  return "answer to the message";
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  if (from.empty()) return;
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
}

bool IsUtf8(std::string_view text) {
  for (std::size_t index = 0; index < text.size();) {
    const std::size_t length = DecodeUtf8(text, index).length;
    if (length == 0) return false;
    index += length;
  }
  return true;
}

// For the user's eyes: some servers repeat what they were told, the login included.
std::string ShownReply(const std::vector<std::string>& lines, const SmtpServer& server) {
  std::string shown;
  for (const std::string& line : lines) {
    std::string text = IsUtf8(line) ? line : AnsiToUtf8(line);
    std::replace_if(
        text.begin(), text.end(),
        [](char character) { return static_cast<unsigned char>(character) < ' ' || character == 0x7F; }, ' ');
    const std::size_t codeSize = std::min<std::size_t>(text.size(), 4);
    std::string words = text.substr(codeSize);
    const std::string nul(1, '\0');
    for (const std::string& secret :
         {Base64(nul + server.user + nul + server.password), Base64(server.password), server.password})
      if (server.login != SmtpLogin::Anonymous) ReplaceAll(words, secret, "***");
    shown += "\r\n" + text.substr(0, codeSize) + words;
  }
  return shown;
}

std::string Reason(const SmtpTransfer& transfer, const SmtpServer& server) {
  const std::string text = transfer.ResultText();
  if (transfer.Result() == CURLE_OPERATION_TIMEDOUT)
    return "No " + std::string(AwaitedThing(transfer.Dialogue().Step())) + " within " +
           std::to_string(server.timeout) + (server.timeout == 1 ? " second." : " seconds.");
  if (text.starts_with("response reading failed"))
    return "The server closed the connection instead of the " +
           std::string(AwaitedThing(transfer.Dialogue().Step())) + ".";
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

std::string MissingLogin(const SmtpDialogue& dialogue, const SmtpServer& server) {
  const std::string wanted = server.login == SmtpLogin::Ntlm ? "NTLM" : "basic";
  const std::string& offered = dialogue.OfferedLogins();
  return "Login failed: " + ServerName(server) + " does not offer the " + wanted +
         " login that is configured (it offers " + (offered.empty() ? "no login" : offered) +
         "). Nothing was sent.";
}

MailFailure FailureOf(const SmtpTransfer& transfer, const SmtpServer& server, const MailMessage& message) {
  const SmtpDialogue& dialogue = transfer.Dialogue();
  const CURLcode code = transfer.Result();
  const bool isOpen = dialogue.Step() == SmtpStep::Message;
  const std::string doubt = isOpen ? "\r\nIt is not known whether the message was delivered." : "";
  if (transfer.IsCancelled() && !dialogue.IsRefused())
    return {kMailCancelled, MailComponent::kCancelled + doubt};
  if (dialogue.IsEncryptionUnusable())
    return {CURLE_USE_SSL_FAILED,
            "The encryption that " + ServerName(server) +
                " offers cannot be used: it does not spell STARTTLS in capital letters. "
                "Nothing was sent."};
  if (dialogue.IsLoginMissing()) return {CURLE_LOGIN_DENIED, MissingLogin(dialogue, server)};
  if (dialogue.IsRefused()) {
    std::string name = ServerName(server);
    name.front() = 'T';
    return {dialogue.RefusalCode() >= 400 ? dialogue.RefusalCode() : code,
            name + " refused " + RefusedThing(dialogue, message) + ":" +
                ShownReply(dialogue.RefusalLines(), server)};
  }
  const std::string reason = "\r\n" + Reason(transfer, server);
  if (CouldNotConnect(code, dialogue.IsGreeted()))
    return {code, "The transport failed to connect to " + ServerName(server) + "." + reason};
  if (code == CURLE_SSL_CONNECT_ERROR)
    return {code, "The encrypted connection (TLS) to " + ServerName(server) +
                      " could not be set up. Nothing was sent." + reason};
  return {code, "The connection to " + ServerName(server) + " failed." + reason + doubt};
}

// Until the transfer has ended: asks the watch, and lets no server draw out the closing.
void WaitFor(std::future<void>& end, SmtpTransfer& transfer, const SmtpServer& server,
             const MailComponent::Watch& watch) {
  constexpr std::chrono::milliseconds kBetweenLooks(50);
  constexpr int kLongestClosing = 2;  // seconds
  const std::chrono::seconds closing(server.timeout == 0 ? kLongestClosing
                                                         : std::min(server.timeout, kLongestClosing));
  std::optional<Clock::time_point> settledAt;
  while (end.wait_for(kBetweenLooks) != std::future_status::ready) {
    if (!settledAt && transfer.IsSettled()) settledAt = Clock::now();
    if (settledAt && Clock::now() - *settledAt > closing) transfer.ShutDownConnection();
    try {
      if (watch && !transfer.IsCancelled() && !watch()) transfer.Cancel();
    } catch (...) {
      transfer.Cancel();
      throw;
    }
  }
  end.get();
}

}  // namespace

void DeliverBySmtp(const SmtpServer& server, const MailMessage& message, const std::string& text,
                   const MailComponent::Watch& watch) {
  SmtpTransfer transfer(server, message, text);
  std::future<void> end = std::async(std::launch::async, [&transfer] { transfer.Run(); });
  WaitFor(end, transfer, server, watch);
  // Nothing that goes wrong after the acceptance unmakes it.
  if (!transfer.Dialogue().IsAccepted()) throw FailureOf(transfer, server, message);
}

}  // namespace pellorin
