#include "service/mail/LocalMailComponent.h"

#include <ctime>
#include <utility>

#include "base/Text.h"
#include "base/TextCase.h"
#include "platform/Guid.h"
#include "platform/ServiceFolder.h"
#include "service/mail/MailFailure.h"
#include "service/mail/MailMessage.h"
#include "service/mail/MailServerSettings.h"
#include "service/mail/PickupDelivery.h"
#include "service/mail/SmtpDelivery.h"

namespace pellorin {
namespace {

MailAddress ParseSender(const MailServerSettings& settings) {
  const std::vector<MailAddress> senders = ParseAddresses(settings.senderEmail, settings.defaultDomain);
  if (senders.size() > 1)
    throw MailFailure(kBadMailArgument, "There is more than one sender: " + settings.senderEmail);
  return senders.front();
}

// Without braces.
std::string FileGuid() {
  const std::string guid = GenerateGUID();
  return guid.substr(1, guid.size() - 2);
}

}  // namespace

LocalMailComponent::LocalMailComponent(FileOperations& files, std::string programFolder,
                                       LocaleConventions locale)
    : files_(files), programFolder_(std::move(programFolder)), locale_(std::move(locale)) {}

std::string LocalMailComponent::InstallFolder() {
  const std::string folder = RegisteredServiceFolder(files_);
  return folder.empty() ? programFolder_ : folder;
}

std::string LocalMailComponent::Version() {
  return PELLORIN_VERSION;
}

bool LocalMailComponent::Send(const MailArguments& arguments) {
  errorNumber_ = 0;
  errorSource_.clear();
  errorDescription_.clear();
  conversation_ = Conversation();
  try {
    Deliver(arguments);
    return true;
  } catch (const NumberedError& error) {
    errorNumber_ = error.Number();
    errorSource_ = ErrorSource(kMailErrorSource);
    errorDescription_ = error.DescriptionAndPath();
    for (const std::string& line : SplitAt("\r\n", errorDescription_))
      conversation_.Add(ConversationLine::Kind::Note, line);
    return false;
  }
}

void LocalMailComponent::Deliver(const MailArguments& arguments) {
  if (!EqualIgnoringCase(arguments.format, "text"))
    throw MailFailure(kBadMailArgument, "The message format \"" + arguments.format + "\" is not supported.");
  const MailServerSettings settings = LoadMailServer(files_, programFolder_, locale_, arguments.mailServer);
  const MailMessage message{ParseSender(settings),
                            ParseAddresses(arguments.recipients, settings.defaultDomain), arguments.subject,
                            arguments.message};
  const std::string guid = FileGuid();
  std::string uniqueId = guid;
  std::erase(uniqueId, '-');
  const std::string text = BuildMessage(message, std::time(nullptr), uniqueId);
  if (watch_ && !watch_()) throw MailFailure(kMailCancelled, kCancelled);
  if (settings.usesPickupFolder)
    DeliverToPickupFolder(files_, settings.pickupFolder, guid, message, text, conversation_);
  else
    DeliverBySmtp(settings.server, message, text, watch_, conversation_);
}

}  // namespace pellorin
