// One section of the configuration: a section of Pellorin.ini, or one queue. Holds the settings in order and
// knows which of them changed since the last load or save. Names of settings: GetValue, SetValue and
// GetSetting compare exactly; Item, Delete and Add ignore letter case.
//
//   Section& server = document.Add("MAIL:smtp1", SectionType::Mail);
//   server.SetValue(MailKey::kSenderEmail, "me@example.com");
//   if (!server.Validate()) Show(server.ValidationError());
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/SectionType.h"
#include "config/SettingList.h"
#include "config/ini/IniSection.h"
#include "config/queues/QueueSection.h"

namespace pellorin {

class Ini;
class ProfileFile;
struct QueueEntry;
struct Violation;

class Section {
 public:
  pellorin::SectionType SectionType = pellorin::SectionType::Mail;
  std::string Name;  // "MAIL:smtp1", "SQL:MYSERVER", "ADMIN:Pellorin"; for a queue its bare name
  std::string Key;   // in the document's collection: Name, "|" and a GUID; set by Ini::Add
  Ini* Owner = nullptr;
  std::int32_t ListPosition = 0;  // a queue's index in its selector; never saved

  Section() = default;
  Section(const Section&) = delete;
  Section& operator=(const Section&) = delete;

  bool IsDeleted() const { return isDeleted_; }
  // True appends "|" and a new GUID to the name, so that a new section can have the old name before the
  // next save.
  void SetIsDeleted(bool deleted);
  // Whether it was loaded (a new queue: from the template), or a save has begun to write it.
  bool IsOriginal() const { return ini_.IsOriginal() || queue_.IsOriginal(); }
  // The name without the mark of deletion: up to the first "|".
  std::string NameOnDisk() const;
  // The name without the prefix of its type, as selectors show it.
  std::string DisplayName() const;

  // CollectionError when an entry of that name exists in any letter case.
  Setting& Add(std::string settingName, std::string settingValue);
  std::size_t Count() const { return settings_.Count(); }
  void Delete(std::size_t position) { settings_.Remove(position); }
  void Delete(std::string_view key) { settings_.Remove(key); }
  Setting& Item(std::size_t position) const { return settings_.Item(position); }
  Setting& Item(std::string_view key) const { return settings_.Item(key); }
  const SettingList& Settings() const { return settings_; }

  std::string GetValue(std::string_view settingName) const { return settings_.GetValue(settingName); }
  void SetValue(const std::string& settingName, const std::string& settingValue) {
    settings_.SetValue(settingName, settingValue);
  }
  Setting* GetSetting(std::string_view settingName) const { return settings_.GetSetting(settingName); }
  bool HasChanges() const { return isDeleted_ || settings_.HasChanges(); }
  void RollBack() { settings_.RollBack(); }

  // Each clears the last report, applies the rules of ValidationRules.h and returns whether all are met. A
  // section that no save would write is valid.
  bool ValidateMailSettings();
  bool ValidateAdminSettings();
  bool ValidateSqlSettings();
  bool ValidateQueueSettings();
  bool Validate();  // by the rules of this section's type
  // Puts the message in front of the report; an empty one clears the report.
  void AppendError(const std::string& message, const std::string& settingName = {});
  const std::string& ValidationError() const { return validationError_; }
  // The settings that the last validation refused, in the order of checking.
  const std::vector<std::string>& FaultySettings() const { return faultySettings_; }

  // These read and write the Owner's files. NumberedError 50110 and 50111, CollectionError, FileError.
  void Load();
  void LoadFrom(const ProfileFile& file);  // a section of a file that was parsed before
  void LoadFrom(const QueueEntry& file);   // a queue
  void Save();
  void DeleteSection();  // removes it from the disk

  // Full path of the file that holds it, or that a save will write it to.
  std::string FilePath() const;
  // Queues: the file on the disk that this queue came from or was saved to; empty for a new one.
  const std::string& QueueFileName() const { return queue_.FileName(); }
  // Queues: why the definition file cannot be used, with its full path; empty when it can.
  const std::string& QueueProblem() const { return queue_.Problem(); }
  // A twin has the name of an earlier section of the file: it shows that one's settings and is never saved.
  bool IsTwin() const { return ini_.IsTwin(); }
  void SetIsTwin() { ini_.SetIsTwin(); }
  // False when every save of it is refused: it is a twin, was cut off on loading, its definition cannot be
  // used, or its encoding cannot be written.
  bool CanBeWritten() const { return ini_.CanBeWritten() && queue_.CanBeWritten(); }
  // Whether the INI file may hold it, and the program knows all of it.
  bool IsWholeIniSection() const { return ini_.IsOriginal() && ini_.CanBeWritten(); }

 private:
  bool IsQueue() const { return SectionType == pellorin::SectionType::Queue; }
  bool IsNeverWritten() const;
  bool Report(const std::vector<Violation>& violations);

  SettingList settings_{this};
  std::string validationError_;
  std::vector<std::string> faultySettings_;
  bool isDeleted_ = false;
  IniSection ini_;      // unless it is a queue
  QueueSection queue_;  // if it is one
};

}  // namespace pellorin
