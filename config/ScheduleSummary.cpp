#include "config/ScheduleSummary.h"

#include "base/Text.h"
#include "base/Utf16.h"
#include "config/DateTimeWriting.h"
#include "config/Schedule.h"
#include "config/Section.h"
#include "config/SettingKeys.h"

namespace pellorin {
namespace {

// The user's text on one line, shortened so that the line can break where it is shown.
std::string Shown(std::string value) {
  constexpr std::size_t kLongest = 24;
  for (char& character : value)
    if (static_cast<unsigned char>(character) < ' ') character = ' ';
  return Shortened(WithoutOuterBlanks(value), kLongest);
}

// The settings that validation refuses, as two lists.
class Problems {
 public:
  explicit Problems(const Schedule& schedule) : schedule_(schedule) {
    const bool isOnce = schedule.IsOnce();
    Add(!schedule.Number(QueueKey::kEvery), QueueKey::kEvery, NumberToEnter());
    Add(schedule.IsWeekly() && schedule.IsEmpty(QueueKey::kDays), QueueKey::kDays, "the days of the week");
    Add(isOnce && !schedule.TimeOfDay(QueueKey::kOccursOnce), QueueKey::kOccursOnce, "the time of day");
    Add(!isOnce && !schedule.Number(QueueKey::kOccursEvery), QueueKey::kOccursEvery,
        "the number of hours or minutes");
    Add(!isOnce && schedule.IsEmpty(QueueKey::kSpan), QueueKey::kSpan, "the unit (hours or minutes)");
    Add(IsWrittenButUnreadable(QueueKey::kStartTime), QueueKey::kStartTime, "the start time");
    Add(IsWrittenButUnreadable(QueueKey::kEndTime), QueueKey::kEndTime, "the end time");
    const bool needsStartDate = schedule.HasEndDate() && schedule.IsEmpty(QueueKey::kStartDate);
    Add(needsStartDate || IsWrittenButUnreadable(QueueKey::kStartDate), QueueKey::kStartDate,
        "the start date");
    Add(schedule.HasEndDate() && !schedule.Date(QueueKey::kEndDate), QueueKey::kEndDate, "the end date");
  }

  std::string InWords() const {
    const char* between = missing_.empty() || unreadable_.empty() ? "" : ". ";
    return missing_ + between + unreadable_;
  }

 private:
  void Add(bool isProblem, std::string_view name, const char* what) {
    if (!isProblem) return;
    const std::string written = Shown(schedule_.Value(name));
    if (written.empty())
      missing_ += (missing_.empty() ? "Missing: " : ", ") + std::string(what);
    else
      unreadable_ +=
          (unreadable_.empty() ? "Cannot be read: " : ", ") + std::string(what) + " (\"" + written + "\")";
  }
  const char* NumberToEnter() const {
    if (schedule_.IsWeekly()) return "the number of weeks";
    return schedule_.IsDaily() ? "the number of days" : "the number of days or weeks";
  }
  // Validation refuses such a limit even if the queue runs once a day and it limits nothing.
  bool IsWrittenButUnreadable(std::string_view name) const {
    return !schedule_.IsEmpty(name) && !schedule_.Date(name);
  }

  const Schedule& schedule_;
  std::string missing_;
  std::string unreadable_;
};

// A schedule that validation accepts, in words.
class Description {
 public:
  Description(const Schedule& schedule, const LocaleConventions& locale)
      : schedule_(schedule), locale_(locale) {}

  // "every 2 weeks on Mon, Wed"
  std::string Days() const {
    const std::string every = "every " + Amount(QueueKey::kEvery, schedule_.IsWeekly() ? "week" : "day", "");
    if (!schedule_.IsWeekly()) return every;
    return every + " on " + (schedule_.Days().empty() ? "no day" : NamesOfDays(", "));
  }

  std::string Times() const {
    if (schedule_.IsOnce()) return " at " + Time(*schedule_.TimeOfDay(QueueKey::kOccursOnce));
    const auto [start, end] = schedule_.HoursOfDay();
    std::string words = ", every " + Amount(QueueKey::kOccursEvery, Unit(), "");
    if (!schedule_.IsEmpty(QueueKey::kStartTime)) words += " from " + Time(start);
    if (!schedule_.IsEmpty(QueueKey::kEndTime))
      words += (schedule_.IsEmpty(QueueKey::kStartTime) ? " until " : " to ") + Time(end);
    return words;
  }

  std::string Dates(const char* from = ", from ") const {
    if (schedule_.IsEmpty(QueueKey::kStartDate)) return {};  // an end date needs a start date
    const std::string start = from + Date(QueueKey::kStartDate);
    return schedule_.HasEndDate() ? start + " until " + Date(QueueKey::kEndDate) : start;
  }

  std::string NoneOfItsDays() const { return "no " + NamesOfDays(" or ") + Dates(" from "); }

  std::string LongSpan() const {
    const auto [start, end] = schedule_.HoursOfDay();
    return Amount(QueueKey::kOccursEvery, Unit(), "1 ") + " is longer than " + Time(start) + " to " +
           Time(end);
  }

 private:
  const char* Unit() const { return schedule_.IsInHours() ? "hour" : "minute"; }

  // "day", "2 days"
  std::string Amount(std::string_view name, const std::string& unit, const std::string& one) const {
    const std::string number = Shown(schedule_.Value(name));
    return number == "1" ? one + unit : number + " " + unit + "s";
  }

  std::string NamesOfDays(const std::string& separator) const {
    static constexpr const char* kNames[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
    std::string names;
    for (const std::chrono::weekday day : schedule_.Days())
      names += (names.empty() ? "" : separator) + kNames[day.iso_encoding() - 1];
    return names;
  }

  std::string Time(std::chrono::seconds time) const { return WriteDateTime({{}, time}, locale_); }
  std::string Date(std::string_view name) const { return WriteDateTime(*schedule_.Date(name), locale_); }

  const Schedule& schedule_;
  const LocaleConventions& locale_;
};

}  // namespace

std::string ScheduleSummary(const Section& queue, const LocaleConventions& locale,
                            const std::chrono::year_month_day& today) {
  const Schedule schedule(queue.Settings(), locale);
  if (const std::string problems = Problems(schedule).InWords(); !problems.empty()) return problems;
  if (schedule.EndDateIsBeforeStartDate()) return "End Date is before Start Date";
  if (!schedule.IsDaily() && !schedule.IsWeekly()) return "Occurs is neither Daily nor Weekly";
  if (!schedule.IsOnce() && !schedule.IsInHours() && !schedule.IsInMinutes())
    return "Occurs Every is in neither Hour(s) nor Minute(s)";

  const Description words(schedule, locale);
  std::string all = words.Days() + words.Times() + words.Dates();
  if (schedule.IsNever()) return "Never runs: " + all;
  if (schedule.EndAtIsBeforeStartAt()) return "End At is before Start At";
  if (schedule.HasNoneOfItsDays()) return "Never runs: " + words.NoneOfItsDays();
  if (schedule.IsOver(today)) return "Is over: " + all;
  if (schedule.IsSpanTooLong())
    return "Runs only once a day, because " + words.LongSpan() + ": " + words.Days() + words.Dates();
  all.front() = 'E';
  return all;
}

}  // namespace pellorin
