// One text mail as it travels: headers and body with CRLF line ends, lines of at most 76 characters (only an
// address or a domain that is longer than that makes a longer one), nothing but ASCII. Subject and names take
// any text but control characters, the body any text at all.
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

// `uniqueId`: letters and digits that no other message has. MailFailure when the subject or a name holds a
// control character.
std::string BuildMessage(const MailMessage& message, std::time_t sentAt, const std::string& uniqueId);

// "Sun, 22 Nov 2026 23:05:00 +0100", whatever the locale: the local time and its distance from UTC.
std::string MailDate(std::time_t time);

}  // namespace pellorin
