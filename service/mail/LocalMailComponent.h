// Stands in for the service's mail component where the service's library is not installed. Sends one plain
// text mail through the mail server whose saved settings it is told the name of: through its pickup folder,
// or by SMTP. The install folder is the environment variable PELLORIN_SERVICE_FOLDER, else the first line of
// /etc/pellorin/service-folder, else the program's own folder.
#pragma once

#include "platform/FileOperations.h"
#include "platform/SystemLocale.h"
#include "service/MailComponent.h"

namespace pellorin {

class LocalMailComponent : public MailComponent {
 public:
  // Pellorin.ini is read in the program's folder, its numbers as the locale writes them.
  LocalMailComponent(FileOperations& files, std::string programFolder, LocaleConventions locale = {},
                     std::string folderFile = "/etc/pellorin/service-folder");
  std::string InstallFolder() override;
  std::string Version() override;
  void SetWatch(Watch watch) override { watch_ = std::move(watch); }
  // Looks at recipients, subject, message, mail server and format, of which it knows "text" alone.
  bool Send(const MailArguments& arguments) override;
  int LastErrorNumber() override { return errorNumber_; }
  std::string LastErrorSource() override { return errorSource_; }
  std::string LastErrorDescription() override { return errorDescription_; }

 private:
  void Deliver(const MailArguments& arguments);

  FileOperations& files_;
  std::string programFolder_;
  LocaleConventions locale_;
  std::string folderFile_;
  Watch watch_;
  int errorNumber_ = 0;
  std::string errorSource_;
  std::string errorDescription_;
};

}  // namespace pellorin
