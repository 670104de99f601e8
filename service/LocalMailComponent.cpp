#include "service/LocalMailComponent.h"

#include <cstdlib>
#include <utility>

namespace pellorin {

LocalMailComponent::LocalMailComponent(FileOperations& files, std::string programFolder,
                                       std::string folderFile)
    : files_(files), programFolder_(std::move(programFolder)), folderFile_(std::move(folderFile)) {}

std::string LocalMailComponent::InstallFolder() {
  if (const char* folder = std::getenv("PELLORIN_SERVICE_FOLDER"); folder != nullptr && *folder != '\0')
    return folder;
  const std::string text = ReadFileIfPresent(files_, folderFile_).value_or("");
  const std::string folder = text.substr(0, text.find_first_of("\r\n"));
  return folder.empty() ? programFolder_ : folder;
}

}  // namespace pellorin
