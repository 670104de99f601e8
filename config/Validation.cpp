// The rules that a section must meet before it is saved or used by a test, and the document's report. A
// failed rule puts its message in front of the earlier ones, so a report lists them in the reverse of the
// order of checking.
#include "base/Text.h"
#include "config/DateTimeText.h"
#include "config/Ini.h"
#include "config/NumericText.h"
#include "config/SettingKeys.h"
#include "config/ValueOrDefault.h"

namespace pellorin {
namespace {

// One validation of one section: reads its values, collects its messages.
class Rules {
 public:
  explicit Rules(Section& section) : section_(section) { section_.AppendError(""); }

  std::string Value(std::string_view name) const { return section_.GetValue(name); }
  bool Is(std::string_view name, std::string_view value) const { return Value(name) == value; }
  bool IsEmpty(std::string_view name) const { return Value(name).empty(); }
  bool IsNumber(std::string_view name) const {
    return pellorin::IsNumber(Value(name), section_.Owner->Locale());
  }
  bool IsDate(std::string_view name) const { return pellorin::IsDate(Value(name), section_.Owner->Locale()); }
  void Refuse(const char* settingName, bool broken, const char* message) {
    if (broken) section_.AppendError(message, settingName);
  }
  bool Passed() const { return section_.ValidationError().empty(); }

 private:
  Section& section_;
};

// A folder that this user may not even look at counts as missing.
bool IsFolder(FileOperations& files, const std::string& path) {
  try {
    return files.Status(path).kind == FileKind::Folder;
  } catch (const FileError&) {
    return false;
  }
}

void CheckMailDelivery(Rules& rules, FileOperations& files) {
  const bool isRemote = rules.Is(MailKey::kSendMethod, "2");
  const bool isLocal = rules.Is(MailKey::kSendMethod, "1");
  const std::string folder = rules.Value(MailKey::kLocalMailPickupFolder);
  rules.Refuse(MailKey::kRemoteServerName, isRemote && rules.IsEmpty(MailKey::kRemoteServerName),
               "- Remote Server Name must be provided");
  rules.Refuse(MailKey::kRemoteServerPort, isRemote && !rules.IsNumber(MailKey::kRemoteServerPort),
               "- Remote Server Port must be a number. The most common value is 25");
  rules.Refuse(MailKey::kLocalMailPickupFolder, isLocal && folder.empty(),
               "- Local Pickup Folder must be provided");
  rules.Refuse(MailKey::kLocalMailPickupFolder, isLocal && !folder.empty() && !IsFolder(files, folder),
               "- Local Pickup Folder does not exist");
}

void CheckMailLogin(Rules& rules) {
  const bool isNtlm = rules.Is(MailKey::kAuthenticationMethod, "2");
  const auto parts = SplitAt("\\", rules.Value(MailKey::kUsername));
  const bool hasBoth = parts.size() == 2;
  rules.Refuse(MailKey::kUsername,
               rules.Is(MailKey::kAuthenticationMethod, "1") && rules.IsEmpty(MailKey::kUsername),
               "- Username must be provided");
  rules.Refuse(MailKey::kUsername, isNtlm && !hasBoth,
               "- When using NTML authentication, both username and domain must be provided");
  rules.Refuse(MailKey::kUsername, isNtlm && hasBoth && parts[0].empty(),
               "- When using NTLM authentication, domain must be provided");
  rules.Refuse(MailKey::kUsername, isNtlm && hasBoth && parts[1].empty(), "- Username must be provided");
}

void CheckQueueScope(Rules& rules) {
  rules.Refuse(QueueKey::kEvery, !rules.IsNumber(QueueKey::kEvery), "- The field Every must be a number");
  rules.Refuse(QueueKey::kDays, rules.IsEmpty(QueueKey::kDays) && rules.Is(QueueKey::kFrequency, "weekly"),
               "- Weekly frequency is selected, but no days have been specified");
  rules.Refuse(
      QueueKey::kQueueByDefaultFilter,
      rules.IsEmpty(QueueKey::kQueueByDefaultFilter) && rules.Is(QueueKey::kQueueByDefault, "filter"),
      "- You chose to queue by default based on a filter but the filter is empty");
  rules.Refuse(QueueKey::kQueueByDefaultServers,
               ValueOrDefault(rules.Value(QueueKey::kQueueByDefault), "none") != "none" &&
                   rules.IsEmpty(QueueKey::kQueueByDefaultServers),
               "- You chose to queue by default but did not specify what servers the queue should apply to");
}

void CheckQueueTimes(Rules& rules) {
  const bool isOnce = rules.Is(QueueKey::kOccursType, "once");
  rules.Refuse(QueueKey::kOccursEvery, !isOnce && !rules.IsNumber(QueueKey::kOccursEvery),
               "- The daily frequency field Every must be a number");
  rules.Refuse(QueueKey::kSpan, !isOnce && rules.IsEmpty(QueueKey::kSpan),
               "- The daily frequency time span must be provided");
  rules.Refuse(QueueKey::kOccursOnce, isOnce && !rules.IsDate(QueueKey::kOccursOnce),
               "- Occurs once value should be a date");
  rules.Refuse(QueueKey::kStartTime,
               !rules.IsEmpty(QueueKey::kStartTime) && !rules.IsDate(QueueKey::kStartTime),
               "- The Starting At field has an invalid value");
  rules.Refuse(QueueKey::kEndTime, !rules.IsEmpty(QueueKey::kEndTime) && !rules.IsDate(QueueKey::kEndTime),
               "- The Ending At field has an invalid value");
}

void CheckQueueDuration(Rules& rules, const LocaleConventions& locale) {
  const auto start = ReadDateTime(rules.Value(QueueKey::kStartDate), locale);
  const auto end = ReadDateTime(rules.Value(QueueKey::kEndDate), locale);
  const bool hasEnd = rules.Is(QueueKey::kHasEndDate, "1");
  rules.Refuse(QueueKey::kStartDate, !rules.IsEmpty(QueueKey::kStartDate) && !start,
               "- The Start Date field has an invalid value");
  rules.Refuse(QueueKey::kEndDate, hasEnd && !end, "- The End Date field has an invalid value");
  rules.Refuse(QueueKey::kStartDate, hasEnd && end && !start, "- The Start Date field has an invalid value");
  rules.Refuse(QueueKey::kEndDate, hasEnd && end && start && MomentOf(*end) < MomentOf(*start),
               "- The End Date occurs before the Start Date");
}

}  // namespace

void Section::AppendError(const std::string& message, const std::string& settingName) {
  validationError_ = message.empty() ? std::string() : message + "\r\n" + validationError_;
  if (message.empty()) faultySettings_.clear();
  if (!settingName.empty()) faultySettings_.push_back(settingName);
}

// What no save would write need not be valid, and must not keep the rest from being saved. What the user
// changed in such a section is refused by the save itself, which says why.
bool Section::IsNeverWritten() const {
  return isDeleted_ || !queueProblem_.empty() || (!CanBeWritten() && !HasChanges());
}

bool Section::ValidateMailSettings() {
  Rules rules(*this);
  if (IsNeverWritten()) return true;
  CheckMailDelivery(rules, Owner->Files());
  CheckMailLogin(rules);
  rules.Refuse(MailKey::kSenderEmail, rules.IsEmpty(MailKey::kSenderEmail),
               "- Sender's email must be provided");
  rules.Refuse(MailKey::kConnectionTimeout, !rules.IsNumber(MailKey::kConnectionTimeout),
               "- Timeout must be a number");
  return rules.Passed();
}

bool Section::ValidateAdminSettings() {
  Rules rules(*this);
  if (IsNeverWritten() || Owner->NumOfSections(pellorin::SectionType::Queue) < 1) return true;
  rules.Refuse(AdminKey::kSchedulerUsername, rules.IsEmpty(AdminKey::kSchedulerUsername),
               "- Scheduler Username must be provided");
  rules.Refuse(AdminKey::kSchedulerPassword, rules.IsEmpty(AdminKey::kSchedulerPassword),
               "- Scheduler Password must be provided");
  return rules.Passed();
}

bool Section::ValidateSqlSettings() {
  Rules rules(*this);
  if (IsNeverWritten()) return true;
  rules.Refuse(SqlKey::kSqlUsername,
               rules.Is(SqlKey::kConnectionType, "Sql") && rules.IsEmpty(SqlKey::kSqlUsername),
               "- Username must be provided");
  rules.Refuse(SqlKey::kPrimaryMailServer, rules.IsEmpty(SqlKey::kPrimaryMailServer),
               "- Primary mail server must be provided");
  return rules.Passed();
}

bool Section::ValidateQueueSettings() {
  Rules rules(*this);
  if (IsNeverWritten()) return true;
  CheckQueueScope(rules);
  CheckQueueTimes(rules);
  CheckQueueDuration(rules, Owner->Locale());
  return rules.Passed();
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
