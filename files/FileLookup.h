// Reading whole files and finding them by name. Built on FileOperations. Failures are FileErrors that name
// the file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileOperations.h"

namespace pellorin {

inline constexpr std::uint64_t kLargestFile =
    16u * 1024 * 1024;  // bytes; larger files are refused by ReadFile

// The file's whole content. FileError when it is missing, unreadable, no ordinary file or too large.
std::string ReadFile(FileOperations& files, const std::string& path);
std::optional<std::string> ReadFileIfPresent(FileOperations& files,
                                             const std::string& path);  // none if missing

// The names inside `folder` that equal `name` but for letter case, in order; none when the folder cannot be
// listed.
std::vector<std::string> SpellingsOf(FileOperations& files, const std::string& folder,
                                     const std::string& name);

// The file or folder `name` inside `folder`, as it is spelled on the disk: the exact spelling first, else the
// only name that differs in letter case; `name` as given when there is none or no single one.
std::string FindIgnoringCase(FileOperations& files, const std::string& folder, const std::string& name);

// Whether both texts name the same folder: trailing separators and letter case ignored, links resolved.
bool SameFolder(FileOperations& files, const std::string& left, const std::string& right);

}  // namespace pellorin
