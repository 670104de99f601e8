// Delivery through a pickup folder: the mail becomes a file <guid>.eml that the mail service of this machine
// takes away. The envelope stands in front of the message: one X-Sender, one X-Receiver for each recipient.
// Under its final name there is only ever the complete message, on the disk; after a failure there is
// nothing.
#pragma once

#include <string>

#include "platform/FileOperations.h"
#include "service/mail/MailMessage.h"

namespace pellorin {

// `text` is the message as BuildMessage gives it, `guid` the file's name. MailFailure.
void DeliverToPickupFolder(FileOperations& files, const std::string& folder, const std::string& guid,
                           const MailMessage& message, const std::string& text);

}  // namespace pellorin
