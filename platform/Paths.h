// Paths as texts, in the form that the system uses.
#pragma once

#include <string>
#include <vector>

namespace pellorin {

// folder + the system's separator + name.
std::string JoinPath(const std::string& folder, const std::string& name);
// The two parts of a path. The folder is "." when the path names none.
std::string FolderOf(const std::string& path);
std::string NameOf(const std::string& path);

// Whether the path means the same file in every current folder.
bool IsFullPath(const std::string& path);
// A path that is not full is completed with the current folder. The empty path stays empty.
std::string FullPath(const std::string& path);

// "/srv//mail/./in/" has the root "/" and the names "srv", "mail", "in".
struct PathParts {
  std::string root;
  std::vector<std::string> names;  // may hold ".."
};
PathParts PartsOf(const std::string& fullPath);

}  // namespace pellorin
