// Dates and times read from text: in the locale's order and with its separators, in ISO forms (2026-11-22,
// 2026-11-22T15:04[:05]), with month names, with 12 or 24 hours and with or without seconds, as full hours
// (3 PM), and date and time together. The list of forms is closed: 25:00, 13/32/2026, 2026-02-30, 11/22/26
// and 7 are not dates.
#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include "platform/SystemLocale.h"

namespace pellorin {

struct DateTime {
  std::optional<std::chrono::year_month_day> date;  // absent: a time alone
  std::optional<std::chrono::seconds> timeOfDay;    // since midnight; absent: a date alone
  bool operator==(const DateTime&) const = default;
};

// Nothing when the text is not in one of the forms.
std::optional<DateTime> ReadDateTime(std::string_view text, const LocaleConventions& locale);
// As ReadDateTime, for what a user types: reads 11/22/26, too. Two digits mean the year within 50 years of
// the present one; if two years are 50 years away, the later one.
std::optional<DateTime> ReadTypedDateTime(std::string_view text, const LocaleConventions& locale,
                                          std::chrono::year presentYear);

bool IsDate(std::string_view text, const LocaleConventions& locale);

// For comparing dates, times and both. A missing date counts as 30 December 1899, a missing time as midnight.
std::chrono::sys_seconds MomentOf(const DateTime& value);

}  // namespace pellorin
