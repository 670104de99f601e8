// How a country writes numbers, dates and times. The defaults are US English: 11/22/2026, 11:05 PM, 1,000.5.
#pragma once

#include <array>
#include <string>

namespace pellorin {

enum class DateOrder { MonthDayYear, DayMonthYear, YearMonthDay };

struct LocaleConventions {
  std::string decimalSeparator = ".";
  std::string thousandsSeparator = ",";
  DateOrder dateOrder = DateOrder::MonthDayYear;
  std::string dateSeparator = "/";
  std::string timeSeparator = ":";
  bool twelveHourClock = true;
  bool leadingZeros = false;  // 05.03.2026 rather than 5.3.2026
  std::string am = "AM";      // as the locale writes them; empty if it has none
  std::string pm = "PM";
  std::array<std::string, 12> shortMonthNames{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::array<std::string, 12> longMonthNames{"January",   "February", "March",    "April",
                                             "May",       "June",     "July",     "August",
                                             "September", "October",  "November", "December"};
};

}  // namespace pellorin
