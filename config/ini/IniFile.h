// Pellorin.ini on the disk. Replacing or removing a section rewrites the whole file, durably, starting from
// the file as it is at that moment. A file of NULs, such as a power loss leaves, counts as empty; a copy of
// it is kept before it is overwritten. Failures are FileErrors.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config/ini/ProfileFile.h"
#include "platform/FileOperations.h"

namespace pellorin {

// Size of the buffer that receives the section names, or the lines of one section.
inline constexpr std::size_t kProfileBufferSize = 10000;

class IniFile {
 public:
  IniFile(FileOperations& files, std::string folder);

  const std::string& Path() const { return path_; }

  // Finds the file of that name, in any letter case, and returns its content. Creates an empty file when it
  // is missing. NumberedError 50100 when no file has exactly that name and several differ in letter case.
  std::string Open(const std::string& fileName);
  ProfileFile Read() const;
  bool IsEmpty() const;  // missing or blank
  // Whether the bytes are only line breaks, form feeds, NULs and blanks, perhaps with a Ctrl-Z at the end.
  static bool IsBlank(std::string_view bytes);
  // A sentence with the cure if the bytes are in another encoding, or a byte-order mark alone; else empty.
  static std::string EncodingProblem(std::string_view bytes);

  void ReplaceSection(std::string_view ansiName, const std::vector<std::string>& ansiLines);
  void RemoveSection(std::string_view ansiName);

 private:
  std::string Bytes() const;
  static bool IsLostToNuls(std::string_view bytes);
  std::string Content(const std::string& bytes) const;
  void Write(const std::string& before, const std::string& after);
  void KeepCopyOf(const std::string& bytes);

  FileOperations& files_;
  std::string folder_;
  std::string path_;
};

}  // namespace pellorin
