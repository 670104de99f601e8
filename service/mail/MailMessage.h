// One text mail as it travels: headers and body in ASCII, with CRLF line ends and lines of at most 76
// characters. Only a longer address or domain makes a longer line. Subject and names may hold anything except
// control characters, the body anything at all.
#pragma once

#include <ctime>
#include <string>
#include <vector>

#include "service/mail/MailAddress.h"

namespace pellorin {

struct MailMessage {
  MailAddress from;
  std::vector<MailAddress> to;
  std::string subject;
  std::string body;  // line ends may be CRLF, CR or LF
};

// `uniqueId`: letters and digits that no other message has. MailFailure when the subject or a name holds
// a control character.
std::string BuildMessage(const MailMessage& message, std::time_t sentAt, const std::string& uniqueId);

// The local time and its offset from UTC, in every locale: "Sun, 22 Nov 2026 23:05:00 +0100".
std::string MailDate(std::time_t time);

}  // namespace pellorin
