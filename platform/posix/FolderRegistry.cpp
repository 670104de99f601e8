#include "platform/posix/FolderRegistry.h"

#include <string_view>
#include <utility>

#include "files/AtomicFile.h"
#include "files/FileLookup.h"
#include "platform/Environment.h"
#include "platform/Paths.h"

namespace pellorin {
namespace {

constexpr const char* kUsualRoot = "/etc/pellorin/registry";

// The folder of a key, each of its parts as it is spelled on the disk.
std::string KeyFolder(FileOperations& files, const std::string& root, std::string_view key) {
  std::string folder = root;
  while (!key.empty()) {
    const std::size_t length = key.find('/');
    const std::string part(key.substr(0, length));
    key.remove_prefix(length == std::string_view::npos ? key.size() : length + 1);
    if (!part.empty()) folder = JoinPath(folder, FindIgnoringCase(files, folder, part));
  }
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

bool FolderRegistry::Exists() const {
  return root_ != kUsualRoot || files_.Status(root_).kind == FileKind::Folder;
}

std::unique_ptr<Registry> SystemRegistry(FileOperations& files) {
  return std::make_unique<FolderRegistry>(files, EnvironmentOr("PELLORIN_REGISTRY", kUsualRoot));
}

}  // namespace pellorin
