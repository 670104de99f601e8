// The settings of one mail server as the service finds them: its saved section of Pellorin.ini.
#pragma once

#include <string>

#include "platform/FileOperations.h"
#include "platform/SystemLocale.h"
#include "service/mail/SmtpDelivery.h"

namespace pellorin {

struct MailServerSettings {
  bool usesPickupFolder = false;
  std::string pickupFolder;
  SmtpServer server;  // when no pickup folder is used
  std::string senderEmail;
  std::string defaultDomain;
};

// MailFailure when there is no such section, or no mail can be sent with its settings. Other NumberedErrors
// when the file cannot be read. Never writes.
MailServerSettings LoadMailServer(FileOperations& files, const std::string& programFolder,
                                  const LocaleConventions& locale, const std::string& name);

}  // namespace pellorin
