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

bool IsFullPath(const std::string& path);
// The root of the full path, then each of its parts; "." and empty parts are left out: {"/", "a", "..", "b"}.
std::vector<std::string> PartsOfFullPath(const std::string& path);
std::string WithoutTrailingSeparators(const std::string& path);

}  // namespace pellorin
