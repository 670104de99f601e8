// Who may use a file: owner, group, mode and access list of an open descriptor.
#pragma once

#include <string>

namespace pellorin {

// Read and write for the owner, read for the folder's group, nothing for others. False, with errno, when that
// fails. Only root and members of a group may give a file to it: for others the file keeps their own group.
bool LimitToOwnerAndFolderGroup(int descriptor, const std::string& folder);

// Gives the descriptor's file the access that the file `from` has. FileError when any part of it fails.
void CopyFileAccess(int to, const std::string& from);

}  // namespace pellorin
