// Pellorin.ini on the disk: read whole, and rewritten as a whole, durably, for every section that is replaced
// or removed, always starting from the file as it is at that moment. A file of NULs (a power loss leaves one)
// counts as empty; before it is written over, a copy is kept beside it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config/ini/ProfileFile.h"
#include "platform/FileOperations.h"

namespace pellorin {

// The buffer that names and lines are read with, in bytes.
inline constexpr std::size_t kProfileBufferSize = 10000;

class IniFile {
 public:
  IniFile(FileOperations& files, std::string folder);

  const std::string& Path() const { return path_; }

  // Remembers the file of that name, creates it empty when it is missing, and gives its content.
  // NumberedError when there are several that differ from the name, and from each other, in letter case only.
  std::string Open(const std::string& fileName);
  ProfileFile Read() const;
  bool IsEmpty() const;  // missing or blank
  // Whether there is nothing but line breaks, form feeds, NULs and blanks, and perhaps a Ctrl-Z at the end.
  static bool IsBlank(std::string_view bytes);
  // Why bytes that cannot be read as a profile file cannot, as a sentence with the cure: they are in another
  // encoding, or a byte-order mark alone. Empty when that is not it.
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
