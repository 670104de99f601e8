// The rules that a section must meet before it is saved or used by a test, and the document's report. A
// failed rule puts its message in front of the earlier ones, so a report lists them in the reverse of the
// order of checking.
#include "base/Text.h"
#include "config/DateTimeText.h"
#include "config/Ini.h"
#include "config/NumericText.h"
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
  const bool isRemote = rules.Is("SendMethod", "2");
  const bool isLocal = rules.Is("SendMethod", "1");
  const std::string folder = rules.Value("LocalMailPickupFolder");
  rules.Refuse("RemoteServerName", isRemote && rules.IsEmpty("RemoteServerName"),
               "- Remote Server Name must be provided");
  rules.Refuse("RemoteServerPort", isRemote && !rules.IsNumber("RemoteServerPort"),
               "- Remote Server Port must be a number. The most common value is 25");
  rules.Refuse("LocalMailPickupFolder", isLocal && folder.empty(), "- Local Pickup Folder must be provided");
  rules.Refuse("LocalMailPickupFolder", isLocal && !folder.empty() && !IsFolder(files, folder),
               "- Local Pickup Folder does not exist");
}

void CheckMailLogin(Rules& rules) {
  const bool isNtlm = rules.Is("AuthenticationMethod", "2");
  const auto parts = SplitAt("\\", rules.Value("Username"));
  const bool hasBoth = parts.size() == 2;
  rules.Refuse("Username", rules.Is("AuthenticationMethod", "1") && rules.IsEmpty("Username"),
               "- Username must be provided");
  rules.Refuse("Username", isNtlm && !hasBoth,
               "- When using NTML authentication, both username and domain must be provided");
  rules.Refuse("Username", isNtlm && hasBoth && parts[0].empty(),
               "- When using NTLM authentication, domain must be provided");
  rules.Refuse("Username", isNtlm && hasBoth && parts[1].empty(), "- Username must be provided");
}

void CheckQueueScope(Rules& rules) {
  rules.Refuse("every", !rules.IsNumber("every"), "- The field Every must be a number");
  rules.Refuse("days", rules.IsEmpty("days") && rules.Is("frequency", "weekly"),
               "- Weekly frequency is selected, but no days have been specified");
  rules.Refuse("queuebydefaultfilter",
               rules.IsEmpty("queuebydefaultfilter") && rules.Is("queuebydefault", "filter"),
               "- You chose to queue by default based on a filter but the filter is empty");
  rules.Refuse("queuebydefaultservers",
               ValueOrDefault(rules.Value("queuebydefault"), "none") != "none" &&
                   rules.IsEmpty("queuebydefaultservers"),
               "- You chose to queue by default but did not specify what servers the queue should apply to");
}

void CheckQueueTimes(Rules& rules) {
  const bool isOnce = rules.Is("occurstype", "once");
  rules.Refuse("occursevery", !isOnce && !rules.IsNumber("occursevery"),
               "- The daily frequency field Every must be a number");
  rules.Refuse("span", !isOnce && rules.IsEmpty("span"), "- The daily frequency time span must be provided");
  rules.Refuse("occursonce", isOnce && !rules.IsDate("occursonce"), "- Occurs once value should be a date");
  rules.Refuse("starttime", !rules.IsEmpty("starttime") && !rules.IsDate("starttime"),
               "- The Starting At field has an invalid value");
  rules.Refuse("endtime", !rules.IsEmpty("endtime") && !rules.IsDate("endtime"),
               "- The Ending At field has an invalid value");
}

void CheckQueueDuration(Rules& rules, const LocaleConventions& locale) {
  const auto start = ReadDateTime(rules.Value("startdate"), locale);
  const auto end = ReadDateTime(rules.Value("enddate"), locale);
  const bool hasEnd = rules.Is("hasenddate", "1");
  rules.Refuse("startdate", !rules.IsEmpty("startdate") && !start,
               "- The Start Date field has an invalid value");
  rules.Refuse("enddate", hasEnd && !end, "- The End Date field has an invalid value");
  rules.Refuse("startdate", hasEnd && end && !start, "- The Start Date field has an invalid value");
  rules.Refuse("enddate", hasEnd && end && start && MomentOf(*end) < MomentOf(*start),
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
  rules.Refuse("SenderEmail", rules.IsEmpty("SenderEmail"), "- Sender's email must be provided");
  rules.Refuse("ConnectionTimeout", !rules.IsNumber("ConnectionTimeout"), "- Timeout must be a number");
  return rules.Passed();
}

bool Section::ValidateAdminSettings() {
  Rules rules(*this);
  if (IsNeverWritten() || Owner->NumOfSections(pellorin::SectionType::Queue) < 1) return true;
  rules.Refuse("SchedulerUsername", rules.IsEmpty("SchedulerUsername"),
               "- Scheduler Username must be provided");
  rules.Refuse("SchedulerPassword", rules.IsEmpty("SchedulerPassword"),
               "- Scheduler Password must be provided");
  return rules.Passed();
}

bool Section::ValidateSqlSettings() {
  Rules rules(*this);
  if (IsNeverWritten()) return true;
  rules.Refuse("SqlUsername", rules.Is("ConnectionType", "Sql") && rules.IsEmpty("SqlUsername"),
               "- Username must be provided");
  rules.Refuse("PrimaryMailServer", rules.IsEmpty("PrimaryMailServer"),
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
