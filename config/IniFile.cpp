#include "config/IniFile.h"

#include <utility>

#include "platform/AtomicFile.h"

namespace pellorin {

IniFile::IniFile(FileOperations& files, std::string folder) : files_(files), folder_(std::move(folder)) {}

std::string IniFile::Open(const std::string& fileName) {
  path_ = JoinPath(folder_, fileName);
  std::optional<std::string> bytes = ReadFileIfPresent(files_, path_);
  if (!bytes) {  // perhaps in other letter case
    path_ = JoinPath(folder_, FindIgnoringCase(files_, folder_, fileName));
    bytes = ReadFileIfPresent(files_, path_);
  }
  if (bytes) return std::move(*bytes);
  WriteFileAtomically(files_, path_, "", NewFileAccess::OwnerAndFolderGroup);
  return {};
}

// A file that went away since the start is written anew.
std::string IniFile::Bytes() const {
  return ReadFileIfPresent(files_, path_).value_or("");
}

ProfileFile IniFile::Read() const {
  return ProfileFile(Bytes());
}

bool IniFile::IsEmpty() const {
  return IsBlank(Bytes());
}

bool IniFile::IsBlank(std::string_view bytes) {
  return bytes.find_first_not_of(std::string_view("\r\n \0", 4)) == std::string_view::npos;
}

void IniFile::ReplaceSection(std::string_view ansiName, const std::vector<std::string>& ansiLines) {
  const std::string before = Bytes();
  Write(before, ProfileFile(Content(before)).WithSection(ansiName, ansiLines));
}

void IniFile::RemoveSection(std::string_view ansiName) {
  const std::string before = Bytes();
  Write(before, ProfileFile(Content(before)).WithoutSection(ansiName));
}

bool IniFile::IsLostToNuls(std::string_view bytes) {
  return IsBlank(bytes) && bytes.find('\0') != std::string_view::npos;
}

std::string IniFile::Content(const std::string& bytes) {
  return IsLostToNuls(bytes) ? std::string() : bytes;
}

void IniFile::Write(const std::string& before, const std::string& after) {
  if (after == before && files_.Status(path_).kind != FileKind::Missing) return;
  if (IsLostToNuls(before)) KeepCopyOf(before);
  WriteFileAtomically(files_, path_, after, NewFileAccess::OwnerAndFolderGroup);
}

void IniFile::KeepCopyOf(const std::string& bytes) {
  std::string copy = path_ + ".damaged";
  for (int number = 2; files_.Status(copy).kind != FileKind::Missing; ++number)
    copy = path_ + ".damaged-" + std::to_string(number);
  WriteFileAtomically(files_, copy, bytes, NewFileAccess::OwnerAndFolderGroup);
}

}  // namespace pellorin
