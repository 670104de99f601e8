// Why a mail was not accepted, in words for its sender: the step, the server with its port, and the server's
// full reply or the system's reason. Never the dialogue of a login.
#pragma once

#include "service/mail/MailFailure.h"
#include "service/mail/MailMessage.h"
#include "service/mail/SmtpDelivery.h"
#include "service/mail/SmtpTransfer.h"

namespace pellorin {

// `transfer` has run, and its message was not accepted. The number is the reply code of a server that refused
// something, else libcurl's.
MailFailure FailureOf(const SmtpTransfer& transfer, const SmtpServer& server, const MailMessage& message);

}  // namespace pellorin
