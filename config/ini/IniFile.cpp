#include "config/ini/IniFile.h"

#include <utility>

#include "base/ErrorNumbers.h"
#include "base/NumberedError.h"
#include "base/Text.h"
#include "config/ini/ProfileLines.h"
#include "files/AtomicFile.h"
#include "files/FileLookup.h"
#include "platform/Paths.h"

namespace pellorin {
namespace {

[[noreturn]] void RefuseToChoose(const std::vector<std::string>& spellings, const std::string& wanted,
                                 const std::string& folder) {
  std::string names = spellings.front();
  for (std::size_t i = 1; i < spellings.size(); ++i)
    names += (i + 1 < spellings.size() ? ", " : " and ") + spellings[i];
  throw NumberedError(kIniNotLoaded, ErrorSource("Ini, Load"),
                      "Could not load .INI file\r\nThe folder holds " + names +
                          ", which differ in letter case only. Please keep one of them and call it " +
                          wanted + ".",
                      folder);
}

std::string WrongEncoding(std::string_view encoding) {
  return "It is encoded in " + std::string(encoding) +
         ". Please save it with a text editor as ANSI (code page 1252).";
}

// Recognises UTF-16 without a mark: two ASCII characters, each with a NUL before or after it. No profile
// file begins like this.
bool LooksLikeUtf16(std::string_view bytes) {
  if (bytes.size() < 4) return false;
  const auto isNul = [bytes](std::size_t position) { return bytes[position] == '\0'; };
  return isNul(0) == isNul(2) && isNul(1) == isNul(3) && isNul(0) != isNul(1);
}

}  // namespace

IniFile::IniFile(FileOperations& files, std::string folder) : files_(files), folder_(std::move(folder)) {}

std::string IniFile::Open(const std::string& fileName) {
  path_ = JoinPath(folder_, fileName);
  std::optional<std::string> bytes = ReadFileIfPresent(files_, path_);
  if (!bytes) {  // its name may differ in letter case
    std::vector<std::string> spellings = SpellingsOf(files_, folder_, fileName);
    std::erase_if(spellings, [this](const std::string& name) {
      return files_.Status(JoinPath(folder_, name)).kind == FileKind::Folder;
    });
    if (spellings.size() > 1) RefuseToChoose(spellings, fileName, folder_);
    if (!spellings.empty()) path_ = JoinPath(folder_, spellings.front());
    bytes = ReadFileIfPresent(files_, path_);
  }
  if (bytes) return std::move(*bytes);
  WriteFileAtomically(files_, path_, "", NewFileAccess::OwnerAndFolderGroup);
  return {};
}

// A file that was removed since the start counts as empty.
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
  bytes = bytes.substr(0, EndOfProfileText(bytes));
  return bytes.find_first_not_of(std::string_view("\r\n \0\f\xA0", 6)) == std::string_view::npos;
}

std::string IniFile::EncodingProblem(std::string_view bytes) {
  using std::string_view_literals::operator""sv;
  constexpr std::pair<std::string_view, std::string_view> kMarks[] = {{kUtf8Mark, "UTF-8"},
                                                                      {"\xFF\xFE\0\0"sv, "UTF-32"},
                                                                      {"\0\0\xFE\xFF"sv, "UTF-32"},
                                                                      {kUtf16LittleMark, "UTF-16"},
                                                                      {kUtf16BigMark, "UTF-16"}};
  for (const auto& [mark, encoding] : kMarks) {
    if (!bytes.starts_with(mark)) continue;
    if (IsBlank(bytes.substr(mark.size())))
      return "It holds nothing but the byte-order mark of " + std::string(encoding) +
             ". Please delete the file: the program then makes a new one.";
    return encoding == "UTF-8" ? std::string() : WrongEncoding(encoding);
  }
  return LooksLikeUtf16(bytes) ? WrongEncoding("UTF-16") : std::string();
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

std::string IniFile::Content(const std::string& bytes) const {
  if (const std::string problem = EncodingProblem(bytes); !problem.empty())
    throw FileError(0, problem, path_);  // it was changed since it was loaded
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
