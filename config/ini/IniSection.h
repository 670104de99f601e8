// One section of Pellorin.ini. On the disk it is lines in code page 1252 with scrambled passwords; in memory
// it is a SettingList in clear text.
#pragma once

#include <string>
#include <vector>

namespace pellorin {

class IniFile;
class ProfileFile;
class SettingList;

// Adds the settings of the first section of that name, in file order. NumberedError 50110 for a line without
// "=", CollectionError for a name that occurs twice in any letter case; both carry `path`, the file's.
// Returns whether the file holds more of the section than the 10,000 bytes that are read.
bool ReadIniSection(const ProfileFile& file, const std::string& path, const std::string& sectionName,
                    SettingList& settings);

// The lines that hold the settings: {Port: "25", Password: "abc"} gives "Port=25" and "Password=ulf\".
// NumberedError, with the reason and no path, when a line cannot hold a value or all lines together
// could not be read again.
std::vector<std::string> IniSectionLines(const SettingList& settings);

// A section's place in the file, from its first load or save to its removal. Remembers why it must not be
// written. A failure to write is a NumberedError 50111 that names section and file.
class IniSection {
 public:
  // As ReadIniSection.
  void Load(const ProfileFile& file, const std::string& path, const std::string& sectionName,
            SettingList& settings);
  // Replaces the section in the file as it is on the disk at this moment.
  void Save(IniFile& file, const std::string& sectionName, const SettingList& settings);
  static void Remove(IniFile& file, const std::string& sectionName);

  // Whether the file may hold it: it was loaded, or a save has begun to write it.
  bool IsOriginal() const { return isOriginal_; }
  // A twin has the name of an earlier section of the file and is read with that one's settings.
  bool IsTwin() const { return isTwin_; }
  void SetIsTwin() { isTwin_ = true; }
  // False for a twin, and for a section that was not read to its end.
  bool CanBeWritten() const { return !isTwin_ && !isCutOff_; }

 private:
  void Write(IniFile& file, const std::string& sectionName, const SettingList& settings);

  bool isOriginal_ = false;
  bool isTwin_ = false;
  bool isCutOff_ = false;
};

}  // namespace pellorin
