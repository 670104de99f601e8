#include "config/ValidationRules.h"

#include <string>
#include <utility>

#include "base/Text.h"
#include "config/DateTimeText.h"
#include "config/NumericText.h"
#include "config/SettingKeys.h"
#include "config/ValueOrDefault.h"

namespace pellorin {
namespace {

// One check of one section: reads its values, collects the violations.
class Rules {
 public:
  explicit Rules(const SettingList& settings) : settings_(settings) {}

  std::string Value(std::string_view name) const { return settings_.GetValue(name); }
  bool Is(std::string_view name, std::string_view value) const { return Value(name) == value; }
  bool IsEmpty(std::string_view name) const { return Value(name).empty(); }

  void Refuse(std::string_view name, bool isBroken, std::string_view message) {
    if (isBroken) violations_.push_back({message, name});
  }
  void Require(std::string_view name, std::string_view message) { Refuse(name, IsEmpty(name), message); }
  void RequireNumber(std::string_view name, const LocaleConventions& locale, std::string_view message) {
    Refuse(name, !IsNumber(Value(name), locale), message);
  }
  void RequireDateUnlessEmpty(std::string_view name, const LocaleConventions& locale,
                              std::string_view message) {
    Refuse(name, !IsEmpty(name) && !IsDate(Value(name), locale), message);
  }

  std::vector<Violation> Violations() && { return std::move(violations_); }

 private:
  const SettingList& settings_;
  std::vector<Violation> violations_;
};

// A folder that this user may not even look at counts as missing.
bool IsFolder(FileOperations& files, const std::string& path) {
  try {
    return files.Status(path).kind == FileKind::Folder;
  } catch (const FileError&) {
    return false;
  }
}

void CheckRemoteServer(Rules& rules, const LocaleConventions& locale) {
  rules.Require(MailKey::kRemoteServerName, "- Remote Server Name must be provided");
  rules.RequireNumber(MailKey::kRemoteServerPort, locale,
                      "- Remote Server Port must be a number. The most common value is 25");
}

void CheckPickupFolder(Rules& rules, FileOperations& files) {
  const std::string folder = rules.Value(MailKey::kLocalMailPickupFolder);
  rules.Require(MailKey::kLocalMailPickupFolder, "- Local Pickup Folder must be provided");
  rules.Refuse(MailKey::kLocalMailPickupFolder, !folder.empty() && !IsFolder(files, folder),
               "- Local Pickup Folder does not exist");
}

void CheckNtlmLogin(Rules& rules) {
  const auto parts = SplitAt("\\", rules.Value(MailKey::kUsername));
  const bool hasBoth = parts.size() == 2;
  rules.Refuse(MailKey::kUsername, !hasBoth,
               "- When using NTML authentication, both username and domain must be provided");
  rules.Refuse(MailKey::kUsername, hasBoth && parts[0].empty(),
               "- When using NTLM authentication, domain must be provided");
  rules.Refuse(MailKey::kUsername, hasBoth && parts[1].empty(), "- Username must be provided");
}

void CheckScope(Rules& rules, const LocaleConventions& locale) {
  rules.RequireNumber(QueueKey::kEvery, locale, "- The field Every must be a number");
  if (rules.Is(QueueKey::kFrequency, "weekly"))
    rules.Require(QueueKey::kDays, "- Weekly frequency is selected, but no days have been specified");
  if (rules.Is(QueueKey::kQueueByDefault, "filter"))
    rules.Require(QueueKey::kQueueByDefaultFilter,
                  "- You chose to queue by default based on a filter but the filter is empty");
  if (ValueOrDefault(rules.Value(QueueKey::kQueueByDefault), "none") != "none")
    rules.Require(
        QueueKey::kQueueByDefaultServers,
        "- You chose to queue by default but did not specify what servers the queue should apply to");
}

void CheckTimes(Rules& rules, const LocaleConventions& locale) {
  if (rules.Is(QueueKey::kOccursType, "once")) {
    rules.Refuse(QueueKey::kOccursOnce, !IsDate(rules.Value(QueueKey::kOccursOnce), locale),
                 "- Occurs once value should be a date");
  } else {
    rules.RequireNumber(QueueKey::kOccursEvery, locale, "- The daily frequency field Every must be a number");
    rules.Require(QueueKey::kSpan, "- The daily frequency time span must be provided");
  }
  rules.RequireDateUnlessEmpty(QueueKey::kStartTime, locale, "- The Starting At field has an invalid value");
  rules.RequireDateUnlessEmpty(QueueKey::kEndTime, locale, "- The Ending At field has an invalid value");
}

void CheckDuration(Rules& rules, const LocaleConventions& locale) {
  constexpr std::string_view kBadStartDate = "- The Start Date field has an invalid value";
  rules.RequireDateUnlessEmpty(QueueKey::kStartDate, locale, kBadStartDate);
  if (!rules.Is(QueueKey::kHasEndDate, "1")) return;
  const auto start = ReadDateTime(rules.Value(QueueKey::kStartDate), locale);
  const auto end = ReadDateTime(rules.Value(QueueKey::kEndDate), locale);
  rules.Refuse(QueueKey::kEndDate, !end, "- The End Date field has an invalid value");
  rules.Refuse(QueueKey::kStartDate, end && !start, kBadStartDate);
  rules.Refuse(QueueKey::kEndDate, end && start && MomentOf(*end) < MomentOf(*start),
               "- The End Date occurs before the Start Date");
}

}  // namespace

std::vector<Violation> CheckMailSettings(const SettingList& settings, FileOperations& files,
                                         const LocaleConventions& locale) {
  Rules rules(settings);
  if (rules.Is(MailKey::kSendMethod, "2")) CheckRemoteServer(rules, locale);
  if (rules.Is(MailKey::kSendMethod, "1")) CheckPickupFolder(rules, files);
  if (rules.Is(MailKey::kAuthenticationMethod, "1"))
    rules.Require(MailKey::kUsername, "- Username must be provided");
  if (rules.Is(MailKey::kAuthenticationMethod, "2")) CheckNtlmLogin(rules);
  rules.Require(MailKey::kSenderEmail, "- Sender's email must be provided");
  rules.RequireNumber(MailKey::kConnectionTimeout, locale, "- Timeout must be a number");
  return std::move(rules).Violations();
}

std::vector<Violation> CheckSqlSettings(const SettingList& settings) {
  Rules rules(settings);
  if (rules.Is(SqlKey::kConnectionType, "Sql"))
    rules.Require(SqlKey::kSqlUsername, "- Username must be provided");
  rules.Require(SqlKey::kPrimaryMailServer, "- Primary mail server must be provided");
  return std::move(rules).Violations();
}

std::vector<Violation> CheckAdminSettings(const SettingList& settings) {
  Rules rules(settings);
  rules.Require(AdminKey::kSchedulerUsername, "- Scheduler Username must be provided");
  rules.Require(AdminKey::kSchedulerPassword, "- Scheduler Password must be provided");
  return std::move(rules).Violations();
}

std::vector<Violation> CheckQueueSettings(const SettingList& settings, const LocaleConventions& locale) {
  Rules rules(settings);
  CheckScope(rules, locale);
  CheckTimes(rules, locale);
  CheckDuration(rules, locale);
  return std::move(rules).Violations();
}

}  // namespace pellorin
