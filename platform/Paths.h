// Paths as texts, in the form that the system uses.
#pragma once

#include <string>

namespace pellorin {

// folder + the system's separator + name.
std::string JoinPath(const std::string& folder, const std::string& name);
// The two parts of a path: "." when it names no folder.
std::string FolderOf(const std::string& path);
std::string NameOf(const std::string& path);

}  // namespace pellorin
