#include "config/NextRuns.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "config/DateTimeWriting.h"
#include "config/Schedule.h"

namespace pellorin {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::sys_days;

// A schedule whose settings can all be read, in numbers.
struct Plan {
  sys_days start, end;
  int every = 1;                               // days, or weeks
  std::vector<std::chrono::weekday> weekdays;  // empty: daily
  seconds first{}, last{};                     // times of day
  double step = 0;                             // seconds; 0: once a day

  bool RunsOn(sys_days day) const {
    if (weekdays.empty()) return (day - start).count() % every == 0;
    const auto monday = [](sys_days of) { return of - (std::chrono::weekday(of) - std::chrono::Monday); };
    const auto weeks = (monday(day) - monday(start)).count() / 7;
    return weeks % every == 0 && std::ranges::find(weekdays, std::chrono::weekday(day)) != weekdays.end();
  }
};

bool IsWrittenButUnreadable(const Schedule& schedule, std::string_view name) {
  return !schedule.IsEmpty(name) && !schedule.Date(name);
}

bool ReadDays(const Schedule& schedule, sys_days today, Plan& plan) {
  const auto every = schedule.Number(QueueKey::kEvery);
  if (!every || *every < 1 || *every > 1e6 || *every != std::floor(*every)) return false;
  plan.every = static_cast<int>(*every);
  if (schedule.IsWeekly()) plan.weekdays = schedule.Days();
  if (schedule.IsWeekly() ? plan.weekdays.empty() : !schedule.IsDaily()) return false;
  if (IsWrittenButUnreadable(schedule, QueueKey::kStartDate)) return false;
  const auto start = schedule.Date(QueueKey::kStartDate);
  const auto end = schedule.Date(QueueKey::kEndDate);
  plan.start = start ? sys_days(*start->date) : today;
  if (schedule.HasEndDate() && (!start || !end)) return false;
  constexpr days kHorizon{36525};  // a hundred years
  plan.end = schedule.HasEndDate() ? sys_days(*end->date) : std::max(today, plan.start) + kHorizon;
  return true;
}

bool ReadTimes(const Schedule& schedule, Plan& plan) {
  for (const auto* name : {QueueKey::kStartTime, QueueKey::kEndTime})
    if (IsWrittenButUnreadable(schedule, name)) return false;
  if (schedule.IsOnce()) {
    const auto time = schedule.TimeOfDay(QueueKey::kOccursOnce);
    plan.first = plan.last = time.value_or(seconds());
    return time.has_value();
  }
  const auto number = schedule.Number(QueueKey::kOccursEvery);
  if (!number || *number <= 0 || (!schedule.IsInHours() && !schedule.IsInMinutes())) return false;
  plan.step = std::max(*number * (schedule.IsInHours() ? 3600 : 60), 1.0);
  std::tie(plan.first, plan.last) = schedule.HoursOfDay();
  return true;
}

std::vector<std::chrono::sys_seconds> NextRuns(const Plan& plan, std::chrono::sys_seconds now,
                                               std::size_t count) {
  std::vector<std::chrono::sys_seconds> runs;
  for (sys_days day = std::max(floor<days>(now), plan.start); day <= plan.end; day += days(1)) {
    if (!plan.RunsOn(day)) continue;
    seconds time = plan.first;
    for (int run = 1; time <= plan.last; ++run) {
      if (day + time > now) runs.push_back(day + time);
      if (runs.size() == count) return runs;
      if (plan.step == 0) break;
      time = plan.first + seconds(static_cast<long>(plan.step * run));
    }
  }
  return runs;
}

}  // namespace

std::string NextRunsInWords(const SettingList& queue, const LocaleConventions& locale,
                            std::chrono::sys_seconds now) {
  constexpr std::size_t kCount = 5;
  static constexpr const char* kWeekdays[] = {"Mon ", "Tue ", "Wed ", "Thu ", "Fri ", "Sat ", "Sun "};
  const Schedule schedule(queue, locale);
  Plan plan;
  if (!ReadDays(schedule, floor<days>(now), plan) || !ReadTimes(schedule, plan)) return {};
  std::string lines;
  for (const auto run : NextRuns(plan, now, kCount)) {
    const sys_days day = floor<days>(run);
    lines += "\r\n" + (kWeekdays[std::chrono::weekday(day).iso_encoding() - 1] +
                       WriteDateTime({day, run - day}, locale));
  }
  if (lines.empty()) return {};
  return (plan.weekdays.empty() || plan.every == 1
              ? "Next runs, as this schedule reads:"
              : "Next runs, as this schedule reads (weeks count from that of Start Date, from Monday):") +
         lines;
}

}  // namespace pellorin
