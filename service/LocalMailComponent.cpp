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
  if (files_.Status(folderFile_).kind == FileKind::File) {
    const std::string text = ReadFile(files_, folderFile_);
    const std::string folder = text.substr(0, text.find_first_of("\r\n"));
    if (!folder.empty()) return folder;
  }
  return programFolder_;
}

}  // namespace pellorin
