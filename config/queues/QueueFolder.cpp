#include "config/queues/QueueFolder.h"

#include <algorithm>
#include <filesystem>
#include <tuple>

#include "base/AnsiText.h"
#include "base/TextCase.h"
#include "base/Utf8.h"
#include "files/FileLookup.h"
#include "platform/Paths.h"

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

// The template as FindIgnoringCase would find it; without looking at the disk once more.
std::string TemplateAmong(const std::vector<FolderEntry>& entries) {
  const std::string folded = FoldCase(kTemplateName);
  std::string found = kTemplateName;
  int spellings = 0;
  for (const FolderEntry& entry : entries) {
    if (entry.name == kTemplateName) return kTemplateName;
    if (entry.isFolder || entry.name.size() != folded.size() || FoldCase(entry.name) != folded) continue;
    found = entry.name;
    ++spellings;
  }
  return spellings == 1 ? found : kTemplateName;
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
  const std::vector<FolderEntry> entries = Entries();
  const std::string templateName = TemplateAmong(entries);
  for (const auto& [fileName, isFolder] : entries) {
    if (isFolder || !FoldCase(fileName).ends_with(kExtension) || fileName == templateName) continue;
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

// An instance's section could not hold the name of such a queue.
std::string QueueFolder::NameProblem(const std::string& fileName) {
  const std::string cure = " Please rename the file.";
  if (fileName.find_first_of("\r\n") != std::string::npos) return "Its name holds a line break." + cure;
  if (Utf8ToAnsi(fileName)) return {};
  if (Escaped(fileName) != fileName) return "Its name is not valid text." + cure;
  return "Its name holds a character that Pellorin.ini cannot hold (it is outside code page 1252)." + cure;
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
