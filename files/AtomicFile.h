// Replaces whole files, durably: even after a failure or a loss of power, the file holds either its old
// content or the new. Failures are FileErrors that name the file, and leave no temporary file.
#pragma once

#include <string>
#include <string_view>

#include "platform/FileOperations.h"

namespace pellorin {

// Writes a temporary file in the same folder, synchronises it, renames it over the target and synchronises
// the folder. The temporary file's name ends in neither ".xml" nor ".ini". A symbolic link is followed. An
// existing file keeps its access; a new one gets `access`. A read-only file is refused, for root too.
void WriteFileAtomically(FileOperations& files, const std::string& path, std::string_view bytes,
                         NewFileAccess access);

// The same for a new file that another program waits for. `temporary` is a path in the same folder that the
// other program does not take for the file. Once the file has its name, it counts as written, because the
// other program may have taken it: a folder that cannot be synchronised is no longer a failure.
void WriteNewFileAtomically(FileOperations& files, const std::string& temporary, const std::string& target,
                            std::string_view bytes, NewFileAccess access);

// Removes the file, read-only or not, and synchronises its folder. A missing file is not a failure.
void RemoveFileDurably(FileOperations& files, const std::string& path);

}  // namespace pellorin
