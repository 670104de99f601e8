// The configuration document: every section of Pellorin.ini and every queue of the folder QUEUEDefinitions,
// as they were loaded and as they are edited. Nothing reaches the disk before Save. Failures are
// NumberedErrors (50100, 50101, 50110, 50111), FileErrors or CollectionErrors.
//
//   Ini document(SystemFiles(), programFolder, SystemLocaleConventions());
//   document.Load("Pellorin.ini");
//   document.GetSection("MAIL:smtp1")->SetValue(MailKey::kSenderEmail, "me@example.com");
//   if (document.Validate()) document.Save();
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "config/KeyedCollection.h"
#include "config/Section.h"
#include "config/ini/IniFile.h"
#include "config/queues/QueueFolder.h"
#include "platform/FileOperations.h"
#include "platform/SystemLocale.h"

namespace pellorin {

inline constexpr const char* kAdminSectionName = "ADMIN:Pellorin";

class Ini {
 public:
  // The sections that a save wrote and removed before it ended or failed.
  struct SaveReport {
    std::vector<std::string> written;
    std::vector<std::string> removed;
  };

  Ini(FileOperations& files, std::string programFolder, LocaleConventions locale);
  Ini(const Ini&) = delete;
  Ini& operator=(const Ini&) = delete;

  const std::string& Path() const { return file_.Path(); }  // full path of the INI file, once loaded

  pellorin::Section& Add(const std::string& sectionName, SectionType type);  // never looks for duplicates
  // Adds a queue with the settings of the template, or of a file of that name. NumberedError when that cannot
  // be used: then nothing is added.
  pellorin::Section& AddQueue(const std::string& name);
  std::int16_t Count() const;  // every section but the administration's, deleted ones included
  bool HasChanges() const;
  std::int16_t NumOfSections(SectionType type) const;  // those not deleted
  // The sections of that type in order, without deleted ones.
  std::vector<Section*> SectionsOf(SectionType type) const;
  // Whether a section of that type already has the name, given without prefix and in any letter case. Deleted
  // sections do not count.
  bool HoldsName(SectionType type, std::string_view name) const;
  void Delete(std::string_view sectionName);  // CollectionError for an unknown name
  void Delete(Section& section);              // one that CanDelete
  // False for a name with "|", which looks like the mark of deletion, and for a twin, because the file only
  // gives access to the first of two sections of one name. Such a section can only be removed by hand.
  static bool CanDelete(const Section& section) {
    return section.Name.find('|') == std::string::npos && !section.IsTwin();
  }
  Section& Item(std::size_t position) const { return sections_.Item(position); }
  Section& Item(std::string_view key) const { return sections_.Item(key); }
  Section* GetSection(std::string_view sectionName) const;  // exact; null when missing or deleted
  const KeyedCollection<Section>& Sections() const { return sections_; }  // in order, deleted ones included
  // The section at this address; null when the document has none there.
  Section* SectionAt(const void* address) const;

  // The administration section, found without regard to letter case and added when there is none.
  Section& AdminSection();

  // Call it once, on a new document. After a failure the document is incomplete: do not save it.
  void Load(const std::string& iniFileName);
  // Removes the deleted sections, then writes the changed ones, each time from the last to the first. Stops
  // at the first failure.
  void Save();
  const SaveReport& LastSave() const { return lastSave_; }

  bool Validate();
  const std::string& ValidationError() const { return validationError_; }

  // Section names that the file holds beyond the 10,000 bytes that are read; usually empty.
  const std::vector<std::string>& NamesNotLoaded() const { return namesNotLoaded_; }

  // Whether the next save removes this file of the queue folder.
  bool IsAwaitingRemoval(const std::string& queueFileName) const;

  FileOperations& Files() const { return files_; }
  IniFile& File() { return file_; }
  const QueueFolder& Queues() const { return queues_; }
  const LocaleConventions& Locale() const { return locale_; }

 private:
  void LoadSections(const ProfileFile& file);
  bool IsFileLost() const;

  FileOperations& files_;
  LocaleConventions locale_;
  IniFile file_;
  QueueFolder queues_;
  KeyedCollection<Section> sections_;
  std::string validationError_;
  std::vector<std::string> namesNotLoaded_;
  SaveReport lastSave_;
  bool isRestoring_ = false;  // the file was lost, and no save since has written all of it
};

}  // namespace pellorin
