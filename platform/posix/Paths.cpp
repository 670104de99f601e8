#include "platform/Paths.h"

#include <cstddef>
#include <filesystem>
#include <system_error>

#include "base/Text.h"

namespace pellorin {
namespace {

constexpr char kSeparator = '/';

}  // namespace

std::string JoinPath(const std::string& folder, const std::string& name) {
  if (folder.empty() || folder.back() == kSeparator) return folder + name;
  return folder + kSeparator + name;
}

std::string FolderOf(const std::string& path) {
  const std::size_t separator = path.rfind(kSeparator);
  if (separator == std::string::npos) return ".";
  return path.substr(0, separator == 0 ? 1 : separator);
}

std::string NameOf(const std::string& path) {
  return path.substr(path.rfind(kSeparator) + 1);
}

bool IsFullPath(const std::string& path) {
  return path.starts_with(kSeparator);
}

// Without a current folder, a path stays as it is.
std::string FullPath(const std::string& path) {
  if (path.empty() || IsFullPath(path)) return path;
  std::error_code failure;
  const std::filesystem::path full = std::filesystem::absolute(path, failure);
  return failure ? path : full.string();
}

PathParts PartsOf(const std::string& fullPath) {
  PathParts parts{std::string(1, kSeparator), SplitAt(std::string_view(&kSeparator, 1), fullPath)};
  std::erase_if(parts.names, [](const std::string& name) { return name.empty() || name == "."; });
  return parts;
}

}  // namespace pellorin
