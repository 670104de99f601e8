#include "config/ini/IniSection.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include "base/AnsiText.h"
#include "base/ErrorNumbers.h"
#include "base/NumberedError.h"
#include "config/CannotSave.h"
#include "config/PasswordScrambling.h"
#include "config/SettingList.h"
#include "config/ini/IniFile.h"

namespace pellorin {
namespace {

// Holds the reason alone: IniSection::Save adds the section's name and the path.
NumberedError Refusal(const std::string& reason) {
  return {kSectionNotSaved, ErrorSource("IniSection"), reason};
}

// Turns the lines of one section into settings.
class Reader {
 public:
  Reader(const std::string& path, const std::string& sectionName, SettingList& settings)
      : path_(path), sectionName_(sectionName), settings_(settings) {}

  // Like a line end, a NUL ends a setting.
  void TakeLine(std::string_view ansiLine) {
    for (std::size_t nul; (nul = ansiLine.find('\0')) != std::string_view::npos;) {
      if (nul > 0) TakeSetting(ansiLine.substr(0, nul));
      ansiLine.remove_prefix(nul + 1);
    }
    if (!ansiLine.empty()) TakeSetting(ansiLine);
  }

 private:
  void TakeSetting(std::string_view ansiText) {
    const std::size_t separator = ansiText.find('=');
    if (separator == std::string_view::npos)
      throw NumberedError(kSectionNotLoaded, ErrorSource("Section, Load"),
                          "Could not load a parameter from string " + AnsiToUtf8(ansiText) +
                              ". Parameters are expected to be in the form Name=Value. Section " +
                              sectionName_ + ". Please check configuration settings for Pellorin.",
                          path_);
    std::string name = AnsiToUtf8(ansiText.substr(0, separator));
    std::string value = AnsiToUtf8(ansiText.substr(separator + 1));
    MakeClear(name, value);
    settings_.AddLoaded(std::move(name), std::move(value));
  }

  const std::string& path_;
  const std::string& sectionName_;
  SettingList& settings_;
};

std::string IniLine(const Setting& setting) {
  if (!Utf8ToAnsi(setting.Value))
    throw Refusal("The value of " + setting.Name +
                  " holds a character that Pellorin.ini cannot hold (it is outside code page 1252).");
  const auto name = Utf8ToAnsi(setting.Name);
  const std::string line = name.value_or("") + "=" + *Utf8ToAnsi(StoredText(setting.Name, setting.Value));
  if (!name || line.find_first_of(std::string_view("\r\n\0", 3)) != std::string::npos)
    throw Refusal("The value of " + setting.Name + " holds a line break or a NUL character.");
  return line;
}

// A new section must not replace one that the file holds, and the next start must find it.
void RequireRoomFor(const std::string& ansiName, const ProfileFile& file) {
  if (file.HasSection(ansiName))
    throw Refusal("The file already holds a section of this name that was not loaded.");
  const std::size_t names = file.SectionNames(std::numeric_limits<std::size_t>::max()).buffer.size();
  if (names + ansiName.size() + 1 + 2 > kProfileBufferSize)
    throw Refusal("The section names would be longer than the 10,000 bytes that can be read again.");
}

}  // namespace

bool ReadIniSection(const ProfileFile& file, const std::string& path, const std::string& sectionName,
                    SettingList& settings) {
  constexpr std::size_t kUsualSettings = 16;
  settings.Reserve(kUsualSettings);
  Reader reader(path, sectionName, settings);
  try {
    return file.ForEachLine(Utf8ToAnsi(sectionName).value_or(""), kProfileBufferSize,
                            [&reader](std::string_view line) { reader.TakeLine(line); });
  } catch (const CollectionError& error) {
    throw CollectionError(error.Number(), error.Source(),
                          "Section " + sectionName + " holds an entry twice: " + error.Description(), path);
  }
}

std::vector<std::string> IniSectionLines(const SettingList& settings) {
  std::vector<std::string> lines;
  std::size_t size = 1;  // in the buffer of a read: each line ends with a NUL, and one more ends them all
  for (const auto& setting : settings) {
    lines.push_back(IniLine(*setting));
    size += lines.back().size() + 1;
  }
  if (size > kProfileBufferSize)
    throw Refusal("Its settings are longer than the 10,000 bytes that can be read again.");
  return lines;
}

void IniSection::Load(const ProfileFile& file, const std::string& path, const std::string& sectionName,
                      SettingList& settings) {
  isOriginal_ = true;
  isCutOff_ = ReadIniSection(file, path, sectionName, settings);
}

void IniSection::Save(IniFile& file, const std::string& sectionName, const SettingList& settings) {
  try {
    Write(file, sectionName, settings);
  } catch (const NumberedError& error) {
    throw CannotSave(sectionName, error.Description(), error.Path().empty() ? file.Path() : error.Path());
  }
}

void IniSection::Write(IniFile& file, const std::string& sectionName, const SettingList& settings) {
  if (isCutOff_)
    throw Refusal("The file holds more of this section than the 10,000 bytes that could be read.");
  const std::optional<std::string> ansiName = Utf8ToAnsi(sectionName);
  if (!ansiName) throw Refusal("Its name holds a character outside code page 1252.");
  const std::vector<std::string> lines = IniSectionLines(settings);
  if (isTwin_)
    throw Refusal(
        "The file holds two sections of this name, and only the first can be reached. Please rename one in "
        "the file.");
  if (!isOriginal_) RequireRoomFor(*ansiName, file.Read());
  isOriginal_ = true;  // a write that fails at its very end has reached the disk
  file.ReplaceSection(*ansiName, lines);
}

void IniSection::Remove(IniFile& file, const std::string& sectionName) {
  try {
    file.RemoveSection(Utf8ToAnsi(sectionName).value_or(""));
  } catch (const FileError& error) {
    throw CannotSave(sectionName, error.Description(), file.Path());
  }
}

}  // namespace pellorin
