#include "service/mail/SmtpRecord.h"

#include "base/Text.h"
#include "base/TextCase.h"
#include "service/mail/SmtpReplyText.h"

namespace pellorin {
namespace {

// "AUTH PLAIN AGJ…" becomes "AUTH PLAIN ***".
std::string WithoutCredentials(std::string_view command) {
  const std::size_t mechanism = command.find(' ');
  const std::size_t response = command.find(' ', mechanism + 1);
  if (response == std::string_view::npos) return std::string(command);
  return std::string(command.substr(0, response)) + " ***";
}

}  // namespace

void SmtpRecord::Take(curl_infotype kind, std::string_view bytes) {
  if (kind == CURLINFO_DATA_OUT && !hasMessage_) {
    hasMessage_ = true;
    Note("Message of " + std::to_string(messageSize_) + " bytes");
  }
  for (const std::string& part : SplitAt("\n", std::string(bytes))) {
    const std::string_view line =
        part.ends_with('\r') ? std::string_view(part).substr(0, part.size() - 1) : part;
    if (line.empty()) continue;
    if (kind == CURLINFO_HEADER_OUT) TakeCommand(line);
    if (kind == CURLINFO_HEADER_IN) TakeReply(line);
    if (kind == CURLINFO_TEXT) TakeNote(line);
  }
}

void SmtpRecord::TakeCommand(std::string_view line) {
  std::string shown(line);
  if (isAnsweringLogin_)
    shown = "***";
  else if (StartsWithIgnoringCase(line, "AUTH "))
    shown = WithoutCredentials(line);
  conversation_.Add(ConversationLine::Kind::Sent, shown);
}

// Challenges of a login say nothing to a reader, and a reply may repeat what it was sent.
void SmtpRecord::TakeReply(std::string_view line) {
  isAnsweringLogin_ = line.starts_with("334");
  constexpr std::size_t kLineEnd = 2;  // in front of a shown reply
  conversation_.Add(ConversationLine::Kind::Received,
                    isAnsweringLogin_
                        ? "334 ***"
                        : ShownReply({std::string(line)}, server_.user, server_.password).substr(kLineEnd));
}

// These lines of libcurl's have no other source.
void SmtpRecord::TakeNote(std::string_view line) {
  const std::string_view text = WithoutOuterBlanks(line);
  const auto after = [text](std::string_view start) { return std::string(text.substr(start.size())); };
  constexpr std::string_view kTls = "SSL connection using ",
                             kName = "subject: ", kIssuer = "issuer: ", kExpiry = "expire date: ";
  if (text.starts_with("Connected to "))
    Note(std::string(text.substr(0, text.find(" (#"))));  // libcurl's count
  if (text.starts_with(kTls)) Note("Encrypted with " + after(kTls));
  if (text.starts_with(kName)) Note("Certificate of " + after(kName) + " (not verified)");
  if (text.starts_with(kIssuer)) Note("Certificate issued by " + after(kIssuer));
  if (text.starts_with(kExpiry)) Note("Certificate valid until " + after(kExpiry));
}

}  // namespace pellorin
