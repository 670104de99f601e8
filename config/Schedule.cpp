#include "config/Schedule.h"

#include <algorithm>

#include "base/TextCase.h"
#include "config/NumericText.h"
#include "config/SettingKeys.h"

namespace pellorin {

using namespace std::chrono_literals;
using std::chrono::days;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::weekday;

std::optional<double> Schedule::Number(std::string_view name) const {
  return ReadNumber(Value(name), locale_);
}

std::optional<DateTime> Schedule::Date(std::string_view name) const {
  auto value = ReadDateTime(Value(name), locale_);
  if (value) value->date = std::chrono::floor<days>(MomentOf(*value));
  return value;
}

std::optional<seconds> Schedule::TimeOfDay(std::string_view name) const {
  const auto value = ReadDateTime(Value(name), locale_);
  if (!value) return std::nullopt;
  return value->timeOfDay.value_or(0s);
}

std::vector<weekday> Schedule::Days() const {
  static constexpr const char* kNames[] = {"monday", "tuesday",  "wednesday", "thursday",
                                           "friday", "saturday", "sunday"};
  const std::string folded = FoldCase(Value(QueueKey::kDays));
  std::vector<weekday> chosen;
  weekday day = std::chrono::Monday;
  for (const char* name : kNames) {
    if (folded.find(name) != std::string::npos) chosen.push_back(day);
    ++day;
  }
  return chosen;
}

std::pair<seconds, seconds> Schedule::HoursOfDay() const {
  return {TimeOfDay(QueueKey::kStartTime).value_or(0s), TimeOfDay(QueueKey::kEndTime).value_or(24h - 1s)};
}

bool Schedule::EndDateIsBeforeStartDate() const {
  return HasEndDate() && MomentOf(*Date(QueueKey::kEndDate)) < MomentOf(*Date(QueueKey::kStartDate));
}

bool Schedule::IsNever() const {
  return *Number(QueueKey::kEvery) <= 0 || (!IsOnce() && *Number(QueueKey::kOccursEvery) <= 0) ||
         (IsWeekly() && Days().empty());
}

bool Schedule::EndAtIsBeforeStartAt() const {
  const auto [start, end] = HoursOfDay();
  return !IsOnce() && end < start;
}

// The service decides which weeks "every 2 weeks" skips, so all of them count here.
bool Schedule::HasNoneOfItsDays() const {
  if (!IsWeekly() || !HasEndDate()) return false;
  const auto chosen = Days();
  const sys_days first = Day(QueueKey::kStartDate);
  const sys_days last = std::min(Day(QueueKey::kEndDate), first + days(6));
  for (sys_days day = first; day <= last; day += days(1))
    if (std::ranges::find(chosen, weekday(day)) != chosen.end()) return false;
  return true;
}

bool Schedule::IsOver(const std::chrono::year_month_day& today) const {
  return HasEndDate() && Day(QueueKey::kEndDate) < sys_days(today);
}

bool Schedule::IsSpanTooLong() const {
  const auto [start, end] = HoursOfDay();
  const double unit = IsInHours() ? 3600 : 60;  // in seconds
  return !IsOnce() && *Number(QueueKey::kOccursEvery) * unit > static_cast<double>((end - start).count());
}

sys_days Schedule::Day(std::string_view name) const {
  return *Date(name)->date;
}

}  // namespace pellorin
