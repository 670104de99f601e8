// The schedule of one queue as its settings describe it. Reads them as validation and the window's fields do:
// a date without a time is its midnight, a time without a date is on 30 December 1899.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/DateTimeText.h"
#include "config/SettingKeys.h"
#include "config/SettingList.h"

namespace pellorin {

class Schedule {
 public:
  Schedule(const SettingList& queue, const LocaleConventions& locale) : queue_(queue), locale_(locale) {}

  std::string Value(std::string_view name) const { return queue_.GetValue(name); }
  bool Is(std::string_view name, std::string_view value) const { return Value(name) == value; }
  bool IsEmpty(std::string_view name) const { return Value(name).empty(); }
  bool IsDaily() const { return Is(QueueKey::kFrequency, "daily"); }
  bool IsWeekly() const { return Is(QueueKey::kFrequency, "weekly"); }
  bool IsOnce() const { return Is(QueueKey::kOccursType, "once"); }
  bool IsInHours() const { return Is(QueueKey::kSpan, "Hour(s)"); }
  bool IsInMinutes() const { return Is(QueueKey::kSpan, "Minute(s)"); }
  bool HasEndDate() const { return Is(QueueKey::kHasEndDate, "1"); }

  // Nothing when the text cannot be read.
  std::optional<double> Number(std::string_view name) const;
  std::optional<DateTime> Date(std::string_view name) const;  // with its time of day, if it has one
  std::optional<std::chrono::seconds> TimeOfDay(std::string_view name) const;
  std::vector<std::chrono::weekday> Days() const;  // Monday first
  // Start At and End At; the whole day where they are empty or cannot be read.
  std::pair<std::chrono::seconds, std::chrono::seconds> HoursOfDay() const;

  // These require that all settings of the schedule can be read.
  bool EndDateIsBeforeStartDate() const;
  bool IsNever() const;  // every 0 days, weeks, hours or minutes, or on no day of the week
  bool EndAtIsBeforeStartAt() const;
  bool HasNoneOfItsDays() const;  // between Start Date and End Date
  bool IsOver(const std::chrono::year_month_day& today) const;
  bool IsSpanTooLong() const;  // for a second run between Start At and End At

 private:
  std::chrono::sys_days Day(std::string_view name) const;

  const SettingList& queue_;
  const LocaleConventions& locale_;
};

}  // namespace pellorin
