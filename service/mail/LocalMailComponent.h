// Stands in for the service's mail component where the service's library is not installed. Sends one plain
// text mail through the named mail server, using its saved settings: through its pickup folder, or by SMTP.
// Where no folder of the service is registered, the program's own folder takes its place.
#pragma once

#include "platform/FileOperations.h"
#include "platform/SystemLocale.h"
#include "service/MailComponent.h"
#include "service/mail/Conversation.h"

namespace pellorin {

class LocalMailComponent : public MailComponent {
 public:
  // Reads Pellorin.ini in the program's folder, with numbers in the locale's form.
  LocalMailComponent(FileOperations& files, std::string programFolder, LocaleConventions locale = {});
  std::string InstallFolder() override;
  std::string Version() override;
  void SetWatch(Watch watch) override { watch_ = std::move(watch); }
  // Uses recipients, subject, message, mail server and format; the format must be "text".
  bool Send(const MailArguments& arguments) override;
  std::vector<ConversationLine> LastConversation() override { return conversation_.Lines(); }
  int LastErrorNumber() override { return errorNumber_; }
  std::string LastErrorSource() override { return errorSource_; }
  std::string LastErrorDescription() override { return errorDescription_; }

 private:
  void Deliver(const MailArguments& arguments);

  FileOperations& files_;
  std::string programFolder_;
  LocaleConventions locale_;
  Watch watch_;
  Conversation conversation_;
  int errorNumber_ = 0;
  std::string errorSource_;
  std::string errorDescription_;
};

}  // namespace pellorin
