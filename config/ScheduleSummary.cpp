#include "config/ScheduleSummary.h"

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "config/DateTimeText.h"
#include "config/NumericText.h"
#include "platform/OuterBlanks.h"
#include "platform/TextCase.h"

namespace pellorin {
namespace {

// The schedule settings of one queue and what can be read out of each.
class Schedule {
 public:
  Schedule(const Section& queue, const LocaleConventions& locale) : queue_(queue), locale_(locale) {}

  std::string Text(std::string_view name) const {
    return std::string(WithoutOuterBlanks(queue_.GetValue(name)));
  }
  bool Is(std::string_view name, std::string_view value) const { return queue_.GetValue(name) == value; }
  bool IsDaily() const { return Is("frequency", "daily"); }
  bool IsWeekly() const { return Is("frequency", "weekly"); }
  bool IsOnce() const { return Is("occurstype", "once"); }
  bool HasEndDate() const { return Is("hasenddate", "1"); }
  // As validation means it: blanks are no empty setting.
  bool IsEmpty(std::string_view name) const { return Is(name, ""); }

  bool HasNumber(std::string_view name) const { return IsNumber(queue_.GetValue(name), locale_); }
  std::optional<DateTime> Read(std::string_view name) const {
    return ReadDateTime(queue_.GetValue(name), locale_);
  }
  bool HasTime(std::string_view name) const {
    const auto value = Read(name);
    return value && value->timeOfDay;
  }
  bool HasDate(std::string_view name) const {
    const auto value = Read(name);
    return value && value->date;
  }

  std::string Moment(std::string_view name) const {
    const auto value = Read(name);
    return value ? WriteDateTime(*value, locale_) : std::string();
  }

  std::string Unit() const {  // empty when it is none
    if (Is("span", "Hour(s)")) return "hour";
    return Is("span", "Minute(s)") ? "minute" : "";
  }
  std::vector<std::string> Days() const;

 private:
  const Section& queue_;
  const LocaleConventions& locale_;
};

std::vector<std::string> Schedule::Days() const {
  static constexpr std::pair<const char*, const char*> kDays[] = {
      {"monday", "Mon"}, {"tuesday", "Tue"},  {"wednesday", "Wed"}, {"thursday", "Thu"},
      {"friday", "Fri"}, {"saturday", "Sat"}, {"sunday", "Sun"}};
  const std::string folded = FoldCase(queue_.GetValue("days"));
  std::vector<std::string> days;
  for (const auto& [name, shortName] : kDays)
    if (folded.find(name) != std::string::npos) days.emplace_back(shortName);
  return days;
}

const char* NumberToEnter(const Schedule& schedule) {
  if (schedule.IsWeekly()) return "a number of weeks";
  return schedule.IsDaily() ? "a number of days" : "a number of days or weeks";
}

// A limit to the hours of the day. Validation refuses one that cannot be read even where the queue runs once
// a day and it limits nothing.
bool IsBadLimit(const Schedule& schedule, std::string_view name) {
  if (schedule.IsEmpty(name)) return false;
  return schedule.IsOnce() ? !schedule.Read(name) : !schedule.HasTime(name);
}

// The last day of validity needs a first one.
bool IsBadStartDate(const Schedule& schedule) {
  return schedule.IsEmpty("startdate") ? schedule.HasEndDate() : !schedule.HasDate("startdate");
}

std::string Missing(const Schedule& schedule) {
  const bool isOnce = schedule.IsOnce();
  const std::pair<bool, const char*> items[] = {
      {!schedule.IsDaily() && !schedule.IsWeekly(), "a frequency (Daily or Weekly)"},
      {!schedule.HasNumber("every"), NumberToEnter(schedule)},
      {schedule.IsWeekly() && schedule.Days().empty(), "the days of the week"},
      {isOnce && !schedule.HasTime("occursonce"), "the time of day"},
      {!isOnce && !schedule.HasNumber("occursevery"), "a number of hours or minutes"},
      {!isOnce && schedule.Unit().empty(), "the unit (hours or minutes)"},
      {IsBadLimit(schedule, "starttime"), "the start time"},
      {IsBadLimit(schedule, "endtime"), "the end time"},
      {IsBadStartDate(schedule), "the start date"},
      {schedule.HasEndDate() && !schedule.HasDate("enddate"), "the end date"},
  };
  std::string list;
  for (const auto& [isMissing, item] : items)
    if (isMissing) list += (list.empty() ? "" : ", ") + std::string(item);
  return list;
}

// "every day", "every 2 days"
std::string Every(const std::string& number, const std::string& unit) {
  return number == "1" ? "every " + unit : "every " + number + " " + unit + "s";
}

std::string DaysInWords(const Schedule& schedule) {
  std::string words = Every(schedule.Text("every"), schedule.IsWeekly() ? "week" : "day");
  words.front() = 'E';
  if (!schedule.IsWeekly()) return words;
  const char* lead = " on ";
  for (const std::string& day : schedule.Days()) {
    words += lead + day;
    lead = ", ";
  }
  return words;
}

std::string Clause(const Schedule& schedule, const char* lead, std::string_view name) {
  return schedule.IsEmpty(name) ? std::string() : lead + schedule.Moment(name);
}

std::string TimesInWords(const Schedule& schedule) {
  if (schedule.IsOnce()) return " at " + schedule.Moment("occursonce");
  const char* until = schedule.IsEmpty("starttime") ? " until " : " to ";
  return ", " + Every(schedule.Text("occursevery"), schedule.Unit()) +
         Clause(schedule, " from ", "starttime") + Clause(schedule, until, "endtime");
}

std::string DatesInWords(const Schedule& schedule) {
  return Clause(schedule, ", from ", "startdate") +
         (schedule.HasEndDate() ? Clause(schedule, " until ", "enddate") : "");
}

}  // namespace

std::string ScheduleSummary(const Section& queue, const LocaleConventions& locale) {
  const Schedule schedule(queue, locale);
  if (const std::string missing = Missing(schedule); !missing.empty()) return "Missing: " + missing;
  if (schedule.HasEndDate() && MomentOf(*schedule.Read("enddate")) < MomentOf(*schedule.Read("startdate")))
    return "The end date lies before the start date.";
  return DaysInWords(schedule) + TimesInWords(schedule) + DatesInWords(schedule);
}

}  // namespace pellorin
