#include "files/FileLookup.h"

#include <algorithm>

#include "base/TextCase.h"
#include "files/OpenFile.h"
#include "platform/Paths.h"

namespace pellorin {
namespace {

constexpr int kDeepestLink = 40;

[[noreturn]] void RefuseToRead(FileProblem problem, const std::string& reason, const std::string& path) {
  throw FileError(problem, "Cannot read the file: " + reason, path);
}

void RequireReadableKind(const FileStatus& status, const std::string& path) {
  switch (status.kind) {
    case FileKind::File:
    case FileKind::Missing:
      break;
    case FileKind::Folder:
      RefuseToRead(FileProblem::IsFolder, "it is a folder", path);
    case FileKind::Other:
      RefuseToRead(FileProblem::IsNotOrdinaryFile, "it is not an ordinary file", path);
  }
  if (status.size > kLargestFile) RefuseToRead(FileProblem::TooLarge, "it is larger than 16 MB", path);
}

std::string ReadAll(FileOperations& files, const std::string& path, std::uint64_t expectedSize) {
  OpenFile file(files, files.OpenForReading(path));
  // One byte more than expected, so that reading the end needs no second buffer.
  std::string content(static_cast<std::size_t>(expectedSize) + 1, '\0');
  std::size_t size = 0;
  while (const std::size_t count = files.Read(file.Handle(), &content[size], content.size() - size)) {
    size += count;
    if (size > kLargestFile) RefuseToRead(FileProblem::TooLarge, "it is larger than 16 MB", path);
    if (size == content.size()) content.resize(2 * size);
  }
  file.Close();
  content.resize(size);
  return content;
}

// The full path without links and relative parts, spelled as on the disk as far as it exists.
std::string TruePath(FileOperations& files, const std::string& path, int depth) {
  const PathParts parts = PartsOf(FullPath(path));
  std::string truePath = parts.root;
  for (const std::string& name : parts.names) {
    if (name == "..") {
      truePath = FolderOf(truePath);
      continue;
    }
    const std::string candidate = JoinPath(truePath, FindIgnoringCase(files, truePath, name));
    const std::string target = files.ResolveLinks(candidate);
    const bool follow = target != candidate && depth < kDeepestLink;
    truePath = follow ? TruePath(files, target, depth + 1) : candidate;
  }
  return truePath;
}

// A folder that cannot be examined is compared as it is spelled.
std::string ComparablePath(FileOperations& files, const std::string& path) {
  if (path.empty()) return path;  // equals no other folder
  try {
    return TruePath(files, path, 0);
  } catch (const FileError&) {
    const PathParts parts = PartsOf(FullPath(path));
    std::string spelled = parts.root;
    for (const std::string& name : parts.names) spelled = JoinPath(spelled, name);
    return spelled;
  }
}

}  // namespace

std::optional<std::string> ReadFileIfPresent(FileOperations& files, const std::string& path) {
  const FileStatus status = files.Status(path);
  if (status.kind == FileKind::Missing) return std::nullopt;
  RequireReadableKind(status, path);
  try {
    return ReadAll(files, path, status.size);
  } catch (const FileError& error) {
    throw FileError(error.Number(), error.Description(), path);
  }
}

std::string ReadFile(FileOperations& files, const std::string& path) {
  std::optional<std::string> content = ReadFileIfPresent(files, path);
  if (!content) RefuseToRead(FileProblem::Missing, "it does not exist", path);
  return std::move(*content);
}

// A folder that cannot be listed gives no names: opening the file then fails too, and that is reported.
std::vector<std::string> SpellingsOf(FileOperations& files, const std::string& folder,
                                     const std::string& name) {
  std::vector<std::string> spellings;
  try {
    const std::string folded = FoldCase(name);
    for (const FolderEntry& entry : files.List(folder))
      if (FoldCase(entry.name) == folded) spellings.push_back(entry.name);
  } catch (const FileError&) {
    return {};
  }
  std::sort(spellings.begin(), spellings.end());
  return spellings;
}

std::string FindIgnoringCase(FileOperations& files, const std::string& folder, const std::string& name) {
  try {
    if (files.Status(JoinPath(folder, name)).kind != FileKind::Missing) return name;
  } catch (const FileError&) {
    return name;
  }
  const std::vector<std::string> spellings = SpellingsOf(files, folder, name);
  return spellings.size() == 1 ? spellings.front() : name;
}

bool SameFolder(FileOperations& files, const std::string& left, const std::string& right) {
  return EqualIgnoringCase(ComparablePath(files, left), ComparablePath(files, right));
}

}  // namespace pellorin
