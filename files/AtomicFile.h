// Replaces a configuration file as a whole and durably: afterwards, whatever fails and whenever the power
// goes, the file holds either its old or its new content. Writes a temporary file in the same folder (its
// name ends in neither ".xml" nor ".ini"), synchronises it, renames it over the target and synchronises the
// folder. Follows a symbolic link to its target and keeps an existing file's mode and owner. A read-only file
// is refused, for root too. Any failure is raised as FileError and leaves no temporary file behind.
#pragma once

#include <string>
#include <string_view>

#include "platform/FileOperations.h"

namespace pellorin {

void WriteFileAtomically(FileOperations& files, const std::string& path, std::string_view bytes,
                         NewFileAccess access);

// The same for a file that others wait for, under a name that is new: written to `temporary`, a path in the
// same folder, which nobody takes for the file itself. Once the file stands under its name it counts as
// written: a reader may have taken it, so that a folder that cannot be synchronised is no failure any more.
void WriteNewFileAtomically(FileOperations& files, const std::string& temporary, const std::string& target,
                            std::string_view bytes, NewFileAccess access);

// Removes the file, read-only or not, and synchronises its folder. A missing file is no failure.
void RemoveFileDurably(FileOperations& files, const std::string& path);

}  // namespace pellorin
