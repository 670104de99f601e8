// Reads the date and time formats of the system's locales ("%d.%m.%Y", "%I:%M:%S %p"). The program follows
// their order of day, month and year, their separator and their clock; its years have four digits.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/LocaleConventions.h"

namespace pellorin {

struct DateFormat {
  DateOrder order;
  std::string separator;
  bool leadingZeros;
};

struct TimeFormat {
  std::string separator;
  bool twelveHourClock;
};

// Nothing when day, month or year is missing. A format without one common separator (month names,
// 2026年11月22日) keeps its order; its separator becomes "-" if the year comes first, else "/".
std::optional<DateFormat> ParseDateFormat(std::string_view format);

// Nothing when hour or minute is missing. `twelveHourFormat` is the meaning of "%r". A format without one
// common separator gets ":".
std::optional<TimeFormat> ParseTimeFormat(std::string_view format, std::string_view twelveHourFormat);

}  // namespace pellorin
