#include "platform/ServiceFolder.h"

#include "files/FileLookup.h"
#include "platform/Environment.h"
#include "platform/posix/ServiceFolder.h"

namespace pellorin {

std::string RegisteredServiceFolder(FileOperations& files) {
  return ServiceFolderOf(files, "/etc/pellorin/service-folder");
}

std::string ServiceFolderOf(FileOperations& files, const std::string& registrationFile) {
  const std::string chosen = EnvironmentOr("PELLORIN_SERVICE_FOLDER", "");
  if (!chosen.empty()) return chosen;
  const std::string text = ReadFileIfPresent(files, registrationFile).value_or("");
  return text.substr(0, text.find_first_of("\r\n"));
}

}  // namespace pellorin
