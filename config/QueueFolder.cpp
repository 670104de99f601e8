#include "config/QueueFolder.h"

#include <algorithm>
#include <filesystem>
#include <tuple>

#include "platform/TextCase.h"

namespace pellorin {
namespace {

constexpr const char* kFolderName = "QUEUEDefinitions";
constexpr const char* kTemplateName = "defaultQUEUE.xml";
constexpr const char* kExtension = ".xml";

// Where the first ".xml" begins, in any letter case. Folding the whole name would move what stands behind
// characters whose folded form has another length.
std::size_t FindExtension(const std::string& fileName) {
  constexpr std::size_t kLength = 4;
  std::size_t position = 0;
  while (!EqualIgnoringCase(std::string_view(fileName).substr(position, kLength), kExtension)) ++position;
  return position;
}

}  // namespace

QueueFolder::QueueFolder(FileOperations& files, const std::string& programFolder)
    : files_(files), programFolder_(programFolder), folder_(JoinPath(programFolder, kFolderName)) {}

void QueueFolder::FindFolder() {
  folder_ = JoinPath(programFolder_, FindIgnoringCase(files_, programFolder_, kFolderName));
}

std::vector<FolderEntry> QueueFolder::Entries() {
  try {
    return files_.List(folder_);
  } catch (const FileError&) {
    FindFolder();
    return files_.List(folder_);
  }
}

std::vector<QueueFolder::QueueFile> QueueFolder::Queues() {
  struct Sorted {
    std::string foldedName;
    QueueFile file;
  };
  std::vector<Sorted> found;
  for (const auto& [fileName, isFolder] : Entries()) {
    if (isFolder || !FoldCase(fileName).ends_with(kExtension) || fileName == kTemplateName) continue;
    std::string queueName = fileName;
    queueName.erase(FindExtension(fileName), 4);
    found.push_back({FoldCase(queueName), {queueName, fileName}});
  }
  std::sort(found.begin(), found.end(), [](const Sorted& left, const Sorted& right) {
    return std::tie(left.foldedName, left.file.fileName) < std::tie(right.foldedName, right.file.fileName);
  });
  std::vector<QueueFile> queues;
  queues.reserve(found.size());
  for (Sorted& entry : found) queues.push_back(std::move(entry.file));
  return queues;
}

std::string QueueFolder::PathOf(const std::string& fileName) const {
  return JoinPath(folder_, fileName);
}

std::string QueueFolder::TemplatePath() const {
  return PathOf(FindIgnoringCase(files_, folder_, kTemplateName));
}

std::string QueueFolder::FileNameOf(const std::string& queueName) const {
  const std::string fileName = queueName + kExtension;
  return StaysInside(queueName) ? FindIgnoringCase(files_, folder_, fileName) : fileName;
}

bool QueueFolder::StaysInside(const std::string& queueName) {
  return !std::filesystem::path(queueName + kExtension).has_parent_path();
}

}  // namespace pellorin
