// One section of the configuration: a section of Pellorin.ini, or one queue's definition file. Holds the
// settings in order, knows which of them changed since the last load or save, and reads, writes and validates
// itself. Names of settings: GetValue, SetValue and GetSetting compare exactly; Item, Delete and Add by key,
// ignoring case.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/KeyedCollection.h"
#include "config/Setting.h"
#include "config/queues/QueueDefinition.h"

namespace pellorin {

class Ini;
class ProfileFile;

enum class SectionType : std::int32_t { Mail = 0, Sql = 1, Admin = 2, Queue = 3 };

class Section {
 public:
  pellorin::SectionType SectionType = pellorin::SectionType::Mail;
  std::string Name;  // "MAIL:smtp1", "SQL:MYSERVER", "ADMIN:Pellorin"; for a queue its bare name
  std::string Key;   // in the document's collection: Name, "|" and a GUID; set by Ini::Add
  Ini* Owner = nullptr;
  std::int32_t ListPosition = 0;  // where the queue stands in its selector; never saved

  Section() = default;
  Section(const Section&) = delete;
  Section& operator=(const Section&) = delete;

  bool IsDeleted() const { return isDeleted_; }
  // True appends "|" and a new GUID to the name, so that a new section may take it before the next save.
  void SetIsDeleted(bool deleted);
  // Whether the disk may hold it: it was loaded, or a save has begun to write it.
  bool IsOriginal() const { return isOriginal_; }

  // CollectionError when an entry of that name exists in any letter case.
  Setting& Add(std::string settingName, std::string settingValue);
  std::size_t Count() const { return settings_.Count(); }
  void Delete(std::size_t position) { settings_.Remove(position); }
  void Delete(std::string_view key) { settings_.Remove(key); }
  Setting& Item(std::size_t position) const { return settings_.Item(position); }
  Setting& Item(std::string_view key) const { return settings_.Item(key); }
  const KeyedCollection<Setting>& Settings() const { return settings_; }

  std::string GetValue(std::string_view settingName) const;  // empty when missing
  void SetValue(const std::string& settingName, const std::string& settingValue);
  Setting* GetSetting(std::string_view settingName) const;  // null when missing
  bool HasChanges() const;
  void RollBack();  // every value back to the one loaded; entries added since become empty

  // Each clears the last report, applies its rules and returns whether none failed. A section that no save
  // would write is valid.
  bool ValidateMailSettings();
  bool ValidateAdminSettings();
  bool ValidateSqlSettings();
  bool ValidateQueueSettings();
  bool Validate();  // the rules of this section's type
  void AppendError(const std::string& message, const std::string& settingName = {});
  const std::string& ValidationError() const { return validationError_; }
  // The settings that the last validation refused, in the order of checking.
  const std::vector<std::string>& FaultySettings() const { return faultySettings_; }

  // NumberedError 50110, 50111; FileError. See IniFile.h and QueueFolder.h for where the data lies.
  void Load();
  void LoadFrom(const ProfileFile& file);           // an INI section, out of a file parsed before
  void LoadQueueFile(const std::string& fileName);  // a queue, from this file of the queue folder
  void Save();
  void DeleteSection();  // removes it from the disk
  // Whether the INI file that it is to be saved in is missing or blank.
  bool IsFileEmpty() const;

  // Queues: the file on the disk that this queue came from or was saved to; empty for a new one.
  const std::string& QueueFileName() const { return queueFileName_; }
  // Full path of the file that holds it, or that a save will write it to.
  std::string FilePath() const;
  // Queues: why the definition file could not be used, with its full path; empty when all is well.
  const std::string& QueueProblem() const { return queueProblem_; }
  // The file holds another section of this name before this one: it shows that one's settings and is never
  // written.
  bool IsTwin() const { return isTwin_; }
  void SetIsTwin() { isTwin_ = true; }
  // False when every save of it is refused: it is a twin, was cut off on loading, or its definition cannot be
  // used, or not be written in its encoding.
  bool CanBeWritten() const {
    return !isTwin_ && !cutOffOnLoading_ && queueProblem_.empty() && !hasUnwritableEncoding_;
  }
  // Whether it came from the INI file and is all that the file held of it.
  bool IsWholeIniSection() const {
    return SectionType != pellorin::SectionType::Queue && isOriginal_ && CanBeWritten();
  }
  // The name without the prefix of its type ("MAIL:", "SQL:", "ADMIN:", in any letter case), as selectors
  // show it.
  std::string DisplayName() const;

 private:
  void AddLoaded(std::string name, std::string value);
  void AddLoadedLines(std::string_view ansiText);
  void AddLoadedLine(std::string_view ansiLine);
  void LoadQueue();
  void ReadQueueDocument(const std::string& path);
  void AddAttributes(const QueueDefinition& definition);
  bool LoadsAgainFrom(const std::string& bytes) const;
  bool CanKeepEncoding() const;
  bool IsNeverWritten() const;
  void SaveToIni();
  void SaveQueue();
  std::string FileName() const;    // queues
  std::string NameOnDisk() const;  // without the mark of deletion

  KeyedCollection<Setting> settings_;
  std::string validationError_;
  std::vector<std::string> faultySettings_;
  bool isDeleted_ = false;
  bool isOriginal_ = false;
  bool isTwin_ = false;
  bool cutOffOnLoading_ = false;  // the file holds more of this section than was read
  bool hasUnwritableEncoding_ = false;
  std::optional<QueueDefinition> queueDocument_;
  std::string queueFileName_;
  std::string queueProblem_;
};

}  // namespace pellorin
