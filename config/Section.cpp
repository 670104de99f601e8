#include "config/Section.h"

#include <utility>

#include "base/TextCase.h"
#include "config/CannotSave.h"
#include "config/Ini.h"
#include "config/ValidationRules.h"
#include "platform/Guid.h"

namespace pellorin {

void Section::SetIsDeleted(bool deleted) {
  isDeleted_ = deleted;
  if (deleted) Name += "|" + GenerateGUID();
}

std::string Section::NameOnDisk() const {
  return Name.substr(0, Name.find('|'));
}

std::string Section::DisplayName() const {
  const std::string_view prefix = PrefixOf(SectionType);
  return StartsWithIgnoringCase(Name, prefix) ? Name.substr(prefix.size()) : Name;
}

Setting& Section::Add(std::string settingName, std::string settingValue) {
  return settings_.Add(std::move(settingName), std::move(settingValue));
}

void Section::AppendError(const std::string& message, const std::string& settingName) {
  validationError_ = message.empty() ? std::string() : message + "\r\n" + validationError_;
  if (message.empty()) faultySettings_.clear();
  if (!settingName.empty()) faultySettings_.push_back(settingName);
}

// A section that is never written need not be valid, and must not keep the rest from being saved. If the user
// changed it, the save itself refuses it and says why.
bool Section::IsNeverWritten() const {
  return isDeleted_ || !QueueProblem().empty() || (!CanBeWritten() && !HasChanges());
}

bool Section::Report(const std::vector<Violation>& violations) {
  AppendError("");
  for (const auto& [message, settingName] : violations)
    AppendError(std::string(message), std::string(settingName));
  return violations.empty();
}

bool Section::ValidateMailSettings() {
  if (IsNeverWritten()) return Report({});
  return Report(CheckMailSettings(settings_, Owner->Files(), Owner->Locale()));
}

bool Section::ValidateAdminSettings() {
  if (IsNeverWritten() || Owner->NumOfSections(pellorin::SectionType::Queue) < 1) return Report({});
  return Report(CheckAdminSettings(settings_));
}

bool Section::ValidateSqlSettings() {
  if (IsNeverWritten()) return Report({});
  return Report(CheckSqlSettings(settings_));
}

bool Section::ValidateQueueSettings() {
  if (IsNeverWritten()) return Report({});
  return Report(CheckQueueSettings(settings_, Owner->Locale()));
}

bool Section::Validate() {
  switch (SectionType) {
    case pellorin::SectionType::Mail:
      return ValidateMailSettings();
    case pellorin::SectionType::Sql:
      return ValidateSqlSettings();
    case pellorin::SectionType::Admin:
      return ValidateAdminSettings();
    case pellorin::SectionType::Queue:
      return ValidateQueueSettings();
  }
  return true;
}

void Section::Load() {
  if (!IsQueue()) return LoadFrom(Owner->File().Read());
  const QueueFolder& folder = Owner->Queues();
  const std::string fileName = folder.FileNameOf(Name);
  const bool hasFile =
      QueueFolder::StaysInside(Name) && !Owner->IsAwaitingRemoval(fileName) && folder.Holds(fileName);
  if (hasFile)
    LoadFrom(QueueEntry{.queueName = Name, .fileName = fileName, .problem = {}});
  else
    queue_.LoadTemplate(folder, Name, settings_);
}

void Section::LoadFrom(const ProfileFile& file) {
  ini_.Load(file, Owner->Path(), Name, settings_);
}

void Section::LoadFrom(const QueueEntry& file) {
  queue_.Load(Owner->Queues(), file, settings_);
}

void Section::Save() {
  if (isDeleted_) throw CannotSave(NameOnDisk(), "It is deleted.", Owner->Path());
  if (IsQueue())
    queue_.Save(Owner->Queues(), Name, settings_);
  else
    ini_.Save(Owner->File(), Name, settings_);
  settings_.MarkAsSaved();
}

void Section::DeleteSection() {
  if (IsQueue())
    queue_.Remove(Owner->Queues(), NameOnDisk());
  else
    IniSection::Remove(Owner->File(), NameOnDisk());
}

std::string Section::FilePath() const {
  return IsQueue() ? queue_.Path(Owner->Queues(), Name) : Owner->Path();
}

}  // namespace pellorin
