// Dates and times as text. Reads the locale's order and separators, ISO forms (2026-11-22,
// 2026-11-22T15:04[:05]), month names, 12 and 24 hours with or without seconds, full hours (3 PM), and date
// and time together. The list of forms is closed: 25:00, 13/32/2026, 2026-02-30, 11/22/26 and 7 are not
// dates. Writes as the locale does, with four-digit years; what is written reads back as the same value.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "platform/SystemLocale.h"

namespace pellorin {

struct DateTime {
  std::optional<std::chrono::year_month_day> date;  // absent: a time alone
  std::optional<std::chrono::seconds> timeOfDay;    // since midnight; absent: a date alone
  bool operator==(const DateTime&) const = default;
};

std::optional<DateTime> ReadDateTime(std::string_view text, const LocaleConventions& locale);
// As ReadDateTime, for what a user types: 11/22/26 is read, too. Two digits mean the year within 50 years of
// the present one; of two that are 50 years away, the later one.
std::optional<DateTime> ReadTypedDateTime(std::string_view text, const LocaleConventions& locale,
                                          std::chrono::year presentYear);

bool IsDate(std::string_view text, const LocaleConventions& locale);

// The parts that the value has: 11/22/2026 11:05:07 PM, 22.11.2026, 23:05. Seconds only when they are not
// zero.
std::string WriteDateTime(const DateTime& value, const LocaleConventions& locale);

// As WriteDateTime, but a time has its seconds also when they are zero: 11/22/2026 8:41:00 AM.
std::string WriteMoment(const DateTime& value, const LocaleConventions& locale);

// A moment that orders dates, times and both: a missing date counts as 30 December 1899, a missing time as
// midnight.
std::chrono::sys_seconds MomentOf(const DateTime& value);

}  // namespace pellorin
