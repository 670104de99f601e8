// Built on FileOperations: reads whole files and finds names. Failures are FileErrors that name the file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileOperations.h"

namespace pellorin {

inline constexpr std::uint64_t kLargestFile = 16u * 1024 * 1024;  // bytes

// The file's whole content. FileError when the file is missing, unreadable, not an ordinary file or
// larger than kLargestFile.
std::string ReadFile(FileOperations& files, const std::string& path);
// The same, but nothing when the file is missing.
std::optional<std::string> ReadFileIfPresent(FileOperations& files, const std::string& path);

// The names in `folder` that equal `name` except for letter case, sorted. None if it cannot be listed.
std::vector<std::string> SpellingsOf(FileOperations& files, const std::string& folder,
                                     const std::string& name);

// The spelling of the file or folder `name` in `folder`: exactly that if it exists, else the only name that
// differs in letter case alone. `name` as given when there is none, or more than one.
std::string FindIgnoringCase(FileOperations& files, const std::string& folder, const std::string& name);

// Whether both paths lead to the same folder. Follows links; ignores letter case and final separators.
bool SameFolder(FileOperations& files, const std::string& left, const std::string& right);

}  // namespace pellorin
