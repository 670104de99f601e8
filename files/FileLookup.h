// Built on FileOperations: reads whole files and finds names. Failures are FileErrors that name the file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileOperations.h"

namespace pellorin {

inline constexpr std::uint64_t kLargestFile = 16u * 1024 * 1024;  // bytes

// The file's whole content. FileError when the file is missing, unreadable, not an ordinary file or larger
// than kLargestFile.
std::string ReadFile(FileOperations& files, const std::string& path);
// The same, but nothing when the file is missing.
std::optional<std::string> ReadFileIfPresent(FileOperations& files, const std::string& path);

// The names in `folder` that equal `name` except for letter case, sorted. None when the folder cannot be
// listed.
std::vector<std::string> SpellingsOf(FileOperations& files, const std::string& folder,
                                     const std::string& name);

// How the file or folder `name` is spelled in `folder`: exactly so if that exists, else as the only name that
// differs in letter case alone. `name` as given when there is no such name, or more than one.
std::string FindIgnoringCase(FileOperations& files, const std::string& folder, const std::string& name);

// Whether both paths lead to the same folder. Links are followed; letter case and final separators do not
// matter.
bool SameFolder(FileOperations& files, const std::string& left, const std::string& right);

}  // namespace pellorin
