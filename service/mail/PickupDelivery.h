// Delivery through a pickup folder: the mail becomes a file <guid>.eml that the mail service of this machine
// picks up. The envelope comes before the message: one X-Sender, and one X-Receiver for each recipient. The
// file appears under its name only when it is complete and on the disk. After a failure there is no file.
#pragma once

#include <string>

#include "platform/FileOperations.h"
#include "service/mail/Conversation.h"
#include "service/mail/MailMessage.h"

namespace pellorin {

// `text` is the result of BuildMessage, `guid` the file's name. MailFailure.
void DeliverToPickupFolder(FileOperations& files, const std::string& folder, const std::string& guid,
                           const MailMessage& message, const std::string& text, Conversation& conversation);

}  // namespace pellorin
