// Reads the date and time formats of the system's locales ("%d.%m.%Y", "%I:%M:%S %p") as far as the program
// follows them: one order, one separator, four-digit years.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/SystemLocale.h"

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

// Nothing when day, month or year is missing. Formats that no single separator describes (month names,
// 2026年11月22日) give their order with "-" when the year comes first, else with "/".
std::optional<DateFormat> ParseDateFormat(std::string_view format);

// Nothing when hour or minute is missing. twelveHourFormat is what "%r" stands for. Without one common
// separator: ":".
std::optional<TimeFormat> ParseTimeFormat(std::string_view format, std::string_view twelveHourFormat);

}  // namespace pellorin
