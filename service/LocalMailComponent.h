// Stands in for the service's mail component where the service's library is not installed. The install folder
// is the environment variable PELLORIN_SERVICE_FOLDER, else the first line of /etc/pellorin/service-folder,
// else the program's own folder.
#pragma once

#include "platform/FileOperations.h"
#include "service/MailComponent.h"

namespace pellorin {

class LocalMailComponent : public MailComponent {
 public:
  LocalMailComponent(FileOperations& files, std::string programFolder,
                     std::string folderFile = "/etc/pellorin/service-folder");
  std::string InstallFolder() override;

 private:
  FileOperations& files_;
  std::string programFolder_;
  std::string folderFile_;
};

}  // namespace pellorin
