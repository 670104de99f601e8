// How the system's locale writes numbers, dates and times. The C locale counts as US English: 11/22/2026,
// 11:05 PM, 1,000.5.
#pragma once

#include <array>
#include <string>
#include <vector>

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
  std::string am = "AM";      // as the locale writes them; empty where it has none
  std::string pm = "PM";
  std::array<std::string, 12> shortMonthNames{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::array<std::string, 12> longMonthNames{"January",   "February", "March",    "April",
                                             "May",       "June",     "July",     "August",
                                             "September", "October",  "November", "December"};
};

// The locale that the environment names (LC_ALL, LC_NUMERIC, LC_TIME, LANG).
LocaleConventions SystemLocaleConventions();
// The locales among them that are not installed, each once: the C locale takes their place.
std::vector<std::string> LocalesNotInstalled();
LocaleConventions LocaleConventionsOf(const std::string& localeName);  // the C conventions when unknown

}  // namespace pellorin
