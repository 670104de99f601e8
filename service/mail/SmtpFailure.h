// Why a mail was not accepted, in the words that its sender reads: the step, the server with its port, and
// the server's full reply or the system's own reason; never the dialogue of a login.
#pragma once

#include "service/mail/MailFailure.h"
#include "service/mail/MailMessage.h"
#include "service/mail/SmtpDelivery.h"
#include "service/mail/SmtpTransfer.h"

namespace pellorin {

// Of a transfer that has run and whose message was not accepted. The number is the server's reply code where
// it refused something, else libcurl's.
MailFailure FailureOf(const SmtpTransfer& transfer, const SmtpServer& server, const MailMessage& message);

}  // namespace pellorin
