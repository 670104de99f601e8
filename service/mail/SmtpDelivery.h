// Delivery to a mail server by SMTP. If the server offers encryption, the mail is sent with it or not at all.
// The server's certificate is not checked, because servers inside a company often sign their own.
#pragma once

#include <string>

#include "service/MailComponent.h"
#include "service/mail/Conversation.h"
#include "service/mail/MailMessage.h"
#include "service/mail/SmtpDialogue.h"

namespace pellorin {

struct SmtpServer {
  std::string host;  // a name, or an IPv4 or IPv6 address
  int port = 25;
  bool isEncryptedFromStart = false;  // else once the server offers it
  int timeout = 0;                    // seconds for the whole delivery; 0: no limit
  SmtpLogin login = SmtpLogin::Anonymous;
  std::string user{};  // "domain\user" for NTLM
  std::string password{};
};

// `text` is the result of BuildMessage. Returns after the server has finally accepted the message. Meanwhile
// asks `watch`, unless it is empty, several times a second. Writes down in `conversation` what was said.
// MailFailure: number = the reply code of the server that refused something, else libcurl's. The description
// holds "The transport failed to connect" exactly when the server could not be reached or did not greet.
void DeliverBySmtp(const SmtpServer& server, const MailMessage& message, const std::string& text,
                   const MailComponent::Watch& watch, Conversation& conversation);

}  // namespace pellorin
