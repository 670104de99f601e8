// Delivery to a mail server by SMTP. Whatever the server offers of encryption is used, and once it is offered
// nothing goes on without it; the server's certificate is not checked, since servers inside of a company have
// their own. Returns after the server's final acceptance of the message, and only then.
#pragma once

#include <string>

#include "service/MailComponent.h"
#include "service/mail/MailMessage.h"
#include "service/mail/SmtpDialogue.h"

namespace pellorin {

struct SmtpServer {
  std::string host;  // a name, or an address of either kind
  int port = 25;
  bool isEncryptedFromStart = false;  // else as soon as the server offers it
  int timeout = 0;                    // seconds for the whole of it; 0: no limit
  SmtpLogin login = SmtpLogin::Anonymous;
  std::string user{};  // "domain\user" for NTLM
  std::string password{};
};

// `text` is the message as BuildMessage gives it. Waits, asking `watch` (which may be empty) several times a
// second. MailFailure: number = the server's reply code where it refused something, else libcurl's; the
// description has "The transport failed to connect" exactly when the server could not be reached or did not
// greet.
void DeliverBySmtp(const SmtpServer& server, const MailMessage& message, const std::string& text,
                   const MailComponent::Watch& watch);

}  // namespace pellorin
