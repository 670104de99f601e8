#include "platform/Paths.h"

#include <cstddef>
#include <filesystem>

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

std::vector<std::string> PartsOfFullPath(const std::string& path) {
  std::vector<std::string> parts{std::string(1, kSeparator)};
  for (const std::filesystem::path& part : std::filesystem::absolute(path)) {
    const std::string name = part.string();
    if (!name.empty() && name != "." && name.front() != kSeparator) parts.push_back(name);
  }
  return parts;
}

std::string WithoutTrailingSeparators(const std::string& path) {
  std::string shorter = path;
  while (shorter.size() > 1 && shorter.back() == kSeparator) shorter.pop_back();
  return shorter;
}

}  // namespace pellorin
