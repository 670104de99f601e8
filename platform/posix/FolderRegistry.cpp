#include "platform/posix/FolderRegistry.h"

#include <string_view>
#include <utility>

#include "base/Text.h"
#include "files/AtomicFile.h"
#include "files/FileLookup.h"
#include "platform/Environment.h"
#include "platform/Paths.h"

namespace pellorin {
namespace {

constexpr const char* kUsualRoot = "/etc/pellorin/registry";

// The folder of a key. Each part of the key is spelled as on the disk.
std::string KeyFolder(FileOperations& files, const std::string& root, std::string_view key) {
  std::string folder = root;
  for (const std::string& part : SplitAt("/", key))
    if (!part.empty()) folder = JoinPath(folder, FindIgnoringCase(files, folder, part));
  return folder;
}

void CreateFolders(FileOperations& files, const std::string& folder) {
  if (files.Status(folder).kind == FileKind::Folder) return;
  const std::string parent = FolderOf(folder);
  if (parent != folder) CreateFolders(files, parent);
  files.CreateFolder(folder);
}

}  // namespace

FolderRegistry::FolderRegistry(FileOperations& files, std::string root)
    : files_(files), root_(std::move(root)) {}

std::optional<std::string> FolderRegistry::ReadValue(const std::string& key, const std::string& value) const {
  const std::string folder = KeyFolder(files_, root_, key);
  const std::string path = JoinPath(folder, FindIgnoringCase(files_, folder, value));
  if (files_.Status(path).kind == FileKind::Folder) return std::nullopt;  // a key
  return ReadFileIfPresent(files_, path);
}

void FolderRegistry::WriteValue(const std::string& key, const std::string& value, const std::string& bytes) {
  const std::string folder = KeyFolder(files_, root_, key);
  CreateFolders(files_, folder);
  const std::string path = JoinPath(folder, FindIgnoringCase(files_, folder, value));
  WriteFileAtomically(files_, path, bytes, NewFileAccess::FolderUsual);
}

std::string FolderRegistry::SystemRoot() {
  return EnvironmentOr("PELLORIN_REGISTRY", kUsualRoot);
}

bool FolderRegistry::HasSystemRoot(FileOperations& files) {
  return SystemRoot() != kUsualRoot || files.Status(kUsualRoot).kind == FileKind::Folder;
}

std::unique_ptr<Registry> SystemRegistry(FileOperations& files) {
  return std::make_unique<FolderRegistry>(files, FolderRegistry::SystemRoot());
}

}  // namespace pellorin
