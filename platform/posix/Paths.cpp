#include "platform/Paths.h"

#include <cstddef>

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

}  // namespace pellorin
