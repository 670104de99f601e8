#include "config/queues/QueueFolder.h"

#include <algorithm>
#include <filesystem>
#include <tuple>
#include <utility>

#include "base/AnsiText.h"
#include "base/TextCase.h"
#include "base/Utf8.h"
#include "files/AtomicFile.h"
#include "files/FileLookup.h"
#include "platform/Paths.h"

namespace pellorin {
namespace {

constexpr const char* kFolderName = "QUEUEDefinitions";
constexpr const char* kTemplateName = "defaultQUEUE.xml";
constexpr std::string_view kExtension = ".xml";

std::string FileNameFor(const std::string& queueName) {
  return queueName + std::string(kExtension);
}

// Where the first ".xml" begins, in any letter case. Folding the whole name could change its
// length before that place.
std::size_t FindExtension(std::string_view fileName) {
  std::size_t position = 0;
  while (!StartsWithIgnoringCase(fileName.substr(position), kExtension)) ++position;
  return position;
}

// Why an instance's section could not hold the name of such a queue.
std::string ProblemOf(const std::string& fileName) {
  const std::string cure = " Please rename the file.";
  if (fileName.find_first_of("\r\n") != std::string::npos) return "Its name holds a line break." + cure;
  if (Utf8ToAnsi(fileName)) return {};
  if (Escaped(fileName) != fileName) return "Its name is not valid text." + cure;
  return "Its name holds a character that Pellorin.ini cannot hold (it is outside code page 1252)." + cure;
}

// The template as FindIgnoringCase would find it, but without listing the folder again.
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

std::vector<QueueEntry> QueueFolder::Queues() {
  struct Sorted {
    std::string foldedName;
    QueueEntry file;
  };
  std::vector<Sorted> found;
  const std::vector<FolderEntry> entries = Entries();
  const std::string templateName = TemplateAmong(entries);
  for (const auto& [fileName, isFolder] : entries) {
    if (isFolder || !EndsWithIgnoringCase(fileName, kExtension) || fileName == templateName) continue;
    std::string queueName = fileName;
    queueName.erase(FindExtension(fileName), kExtension.size());
    std::string foldedName = FoldCase(queueName);
    std::string problem = ProblemOf(fileName);
    if (!problem.empty()) queueName = Escaped(queueName);
    found.push_back({std::move(foldedName), {std::move(queueName), fileName, std::move(problem)}});
  }
  std::sort(found.begin(), found.end(), [](const Sorted& left, const Sorted& right) {
    return std::tie(left.foldedName, left.file.fileName) < std::tie(right.foldedName, right.file.fileName);
  });
  std::vector<QueueEntry> queues;
  queues.reserve(found.size());
  for (Sorted& entry : found) queues.push_back(std::move(entry.file));
  return queues;
}

std::string QueueFolder::PathOf(const std::string& fileName) const {
  return JoinPath(folder_, fileName);
}

std::string QueueFolder::TemplateName() const {
  return FindIgnoringCase(files_, folder_, kTemplateName);
}

std::string QueueFolder::FileNameOf(const std::string& queueName) const {
  const std::string fileName = FileNameFor(queueName);
  return StaysInside(queueName) ? FindIgnoringCase(files_, folder_, fileName) : fileName;
}

bool QueueFolder::StaysInside(const std::string& queueName) {
  return !std::filesystem::path(FileNameFor(queueName)).has_parent_path();
}

bool QueueFolder::Holds(const std::string& fileName) const {
  return files_.Status(PathOf(fileName)).kind != FileKind::Missing;
}

std::string QueueFolder::Read(const std::string& fileName) const {
  return ReadFile(files_, PathOf(fileName));
}

void QueueFolder::Write(const std::string& fileName, std::string_view bytes) const {
  WriteFileAtomically(files_, PathOf(fileName), bytes, NewFileAccess::FolderUsual);
}

void QueueFolder::Remove(const std::string& fileName) const {
  RemoveFileDurably(files_, PathOf(fileName));
}

}  // namespace pellorin
