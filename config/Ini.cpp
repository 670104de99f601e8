#include "config/Ini.h"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

#include "base/AnsiText.h"
#include "base/ErrorNumbers.h"
#include "base/NumberedError.h"
#include "base/TextCase.h"
#include "config/CannotSave.h"
#include "platform/Guid.h"

namespace pellorin {
namespace {

constexpr const char* kLoadSource = "Ini, Load";

std::int16_t ClampedToInt16(std::ptrdiff_t count) {
  return static_cast<std::int16_t>(std::min<std::ptrdiff_t>(count, std::numeric_limits<std::int16_t>::max()));
}

// The type that the name's prefix means; an unknown prefix keeps the type of the section before.
SectionType TypeOf(const std::string& name, SectionType previous, const std::string& path) {
  if (std::count(name.begin(), name.end(), ':') != 1)
    throw NumberedError(
        kSectionNameNotRead, ErrorSource(kLoadSource),
        "Could not read section name: " + name + ". The extected format is SQL:name or MAIL:name", path);
  for (const SectionType type : {SectionType::Sql, SectionType::Admin, SectionType::Mail})
    if (StartsWithIgnoringCase(name, PrefixOf(type))) return type;
  return previous;
}

}  // namespace

Ini::Ini(FileOperations& files, std::string programFolder, LocaleConventions locale)
    : files_(files), locale_(std::move(locale)), file_(files, programFolder), queues_(files, programFolder) {}

Section& Ini::Add(const std::string& sectionName, SectionType type) {
  auto section = std::make_unique<Section>();
  section->Name = sectionName;
  section->SectionType = type;
  section->Key = sectionName + "|" + GenerateGUID();
  section->Owner = this;
  const std::string key = section->Key;
  return sections_.Add(key, std::move(section));
}

Section& Ini::AddQueue(const std::string& name) {
  Section& queue = Add(name, SectionType::Queue);
  try {
    queue.Load();
    if (!queue.CanBeWritten())
      throw NumberedError(
          kSectionNotLoaded, ErrorSource("Ini, AddQueue"),
          "Queue " + name + " could not be added: the definition that it starts from cannot be used.\r\n" +
              (queue.QueueProblem().empty() ? queues_.PathOf(queues_.TemplateName()) : queue.QueueProblem()));
  } catch (...) {
    sections_.Remove(std::string(queue.Key));
    throw;
  }
  return queue;
}

std::int16_t Ini::Count() const {
  return ClampedToInt16(std::count_if(sections_.begin(), sections_.end(), [](const auto& section) {
    return section->SectionType != SectionType::Admin;
  }));
}

std::int16_t Ini::NumOfSections(SectionType type) const {
  return ClampedToInt16(static_cast<std::ptrdiff_t>(SectionsOf(type).size()));
}

std::vector<Section*> Ini::SectionsOf(SectionType type) const {
  std::vector<Section*> found;
  for (const auto& section : sections_)
    if (section->SectionType == type && !section->IsDeleted()) found.push_back(section.get());
  return found;
}

bool Ini::HoldsName(SectionType type, std::string_view name) const {
  if (type == SectionType::Mail)
    return std::any_of(sections_.begin(), sections_.end(),
                       [wanted = SectionName(type, name)](const auto& section) {
                         return EqualIgnoringCase(section->Name, wanted);
                       });
  return std::ranges::any_of(SectionsOf(type), [name](const Section* section) {
    return EqualIgnoringCase(section->DisplayName(), name);
  });
}

bool Ini::HasChanges() const {
  return isRestoring_ || std::any_of(sections_.begin(), sections_.end(),
                                     [](const auto& section) { return section->HasChanges(); });
}

void Ini::Delete(std::string_view sectionName) {
  Section* section = GetSection(sectionName);
  if (section == nullptr) throw CollectionError::UnknownKey(std::string(sectionName));
  Delete(*section);
}

void Ini::Delete(Section& section) {
  if (!CanDelete(section))
    throw NumberedError(kSectionNotSaved, ErrorSource("Ini, Delete"),
                        "Section " + section.Name + " can only be deleted by hand", Path());
  if (section.IsOriginal())
    section.SetIsDeleted(true);
  else
    sections_.Remove(std::string(section.Key));
}

Section* Ini::GetSection(std::string_view sectionName) const {
  for (const auto& section : sections_)
    if (section->Name == sectionName) return section.get();
  return nullptr;
}

Section* Ini::SectionAt(const void* address) const {
  for (const auto& section : sections_)
    if (section.get() == address) return section.get();
  return nullptr;
}

Section& Ini::AdminSection() {
  for (const auto& section : sections_)
    if (EqualIgnoringCase(section->Name, kAdminSectionName)) return *section;
  return Add(kAdminSectionName, SectionType::Admin);
}

void Ini::Load(const std::string& iniFileName) {
  std::string bytes = file_.Open(iniFileName);
  if (IniFile::IsBlank(bytes)) {  // a new installation: its queues are not loaded
    queues_.FindFolder();
    AdminSection();
    return;
  }
  const std::string encodingProblem = IniFile::EncodingProblem(bytes);
  if (!encodingProblem.empty())
    throw NumberedError(kIniNotLoaded, ErrorSource(kLoadSource),
                        "Could not load .INI file\r\n" + encodingProblem, Path());
  LoadSections(ProfileFile(std::move(bytes)));
  AdminSection();
  for (const QueueEntry& file : queues_.Queues()) Add(file.queueName, SectionType::Queue).LoadFrom(file);
}

void Ini::LoadSections(const ProfileFile& file) {
  const ProfileText read = file.SectionNames(kProfileBufferSize);
  if (read.buffer.empty())
    throw NumberedError(kIniNotLoaded, ErrorSource(kLoadSource), "Could not load .INI file", Path());
  const ProfileText whole = file.SectionNames(std::numeric_limits<std::size_t>::max());
  SectionType type = SectionType::Mail;
  std::set<std::string> namesSeen;
  for (const std::string_view ansiName : whole.Pieces()) {
    const std::string name = AnsiToUtf8(ansiName);
    // A name that the limit cuts is not loaded: the file does not hold a section of the shorter name.
    const auto end = static_cast<std::size_t>(ansiName.data() + ansiName.size() - whole.buffer.data());
    if (end > read.buffer.size()) {
      namesNotLoaded_.push_back(name);
      continue;
    }
    type = TypeOf(name, type, Path());
    Section& section = Add(name, type);
    section.LoadFrom(file);
    if (!namesSeen.insert(FoldCase(name)).second) section.SetIsTwin();
  }
}

bool Ini::IsAwaitingRemoval(const std::string& queueFileName) const {
  return std::any_of(sections_.begin(), sections_.end(), [&](const auto& section) {
    return section->IsDeleted() && section->SectionType == SectionType::Queue &&
           section->QueueFileName() == queueFileName;
  });
}

// Whether the file was removed or emptied since it was loaded. Then a save writes all sections again.
bool Ini::IsFileLost() const {
  const auto changed = std::find_if(sections_.begin(), sections_.end(), [](const auto& section) {
    return section->SectionType != SectionType::Queue && section->HasChanges();
  });
  const bool wasLoaded = std::any_of(sections_.begin(), sections_.end(),
                                     [](const auto& section) { return section->IsWholeIniSection(); });
  if (!wasLoaded || changed == sections_.end()) return false;
  try {
    return file_.IsEmpty();
  } catch (const FileError& error) {
    throw CannotSave((*changed)->NameOnDisk(), error.Description(), error.Path());
  }
}

void Ini::Save() {
  lastSave_ = {};
  isRestoring_ = isRestoring_ || IsFileLost();
  for (std::size_t position = sections_.Count(); position >= 1; --position) {
    Section& section = sections_.Item(position);
    if (!section.IsDeleted()) continue;
    section.DeleteSection();
    lastSave_.removed.push_back(section.NameOnDisk());
    sections_.Remove(position);
  }
  for (std::size_t position = sections_.Count(); position >= 1; --position) {
    Section& section = sections_.Item(position);
    if (!section.HasChanges() && !(isRestoring_ && section.IsWholeIniSection())) continue;
    section.Save();
    lastSave_.written.push_back(section.Name);
  }
  isRestoring_ = false;
}

bool Ini::Validate() {
  validationError_.clear();
  for (const auto& section : sections_) {
    if (section->Validate()) continue;
    const bool isQueue = section->SectionType == SectionType::Queue;
    const std::string header = (isQueue ? "QUEUE:" : "") + section->Name;
    validationError_ = "\r\n" + header + "\r\n" + section->ValidationError() + "\r\n" + validationError_;
  }
  return validationError_.empty();
}

}  // namespace pellorin
