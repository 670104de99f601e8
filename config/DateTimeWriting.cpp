#include "config/DateTimeWriting.h"

#include <algorithm>
#include <cstddef>

namespace pellorin {
namespace {

std::string Digits(long number, std::size_t fewest) {
  const std::string digits = std::to_string(number);
  return std::string(std::max(fewest, digits.size()) - digits.size(), '0') + digits;
}

std::string DateText(const std::chrono::year_month_day& date, const LocaleConventions& locale) {
  const std::size_t fewest = locale.leadingZeros ? 2 : 1;
  const std::string year = Digits(int{date.year()}, 4);
  const std::string month = Digits(unsigned{date.month()}, fewest);
  const std::string day = Digits(unsigned{date.day()}, fewest);
  const std::string& separator = locale.dateSeparator;
  switch (locale.dateOrder) {
    case DateOrder::MonthDayYear:
      return month + separator + day + separator + year;
    case DateOrder::DayMonthYear:
      return day + separator + month + separator + year;
    case DateOrder::YearMonthDay:
      return year + separator + month + separator + day;
  }
  return {};
}

enum class Seconds { UnlessZero, Always };

std::string TimeText(std::chrono::seconds timeOfDay, const LocaleConventions& locale, Seconds seconds) {
  const std::chrono::hh_mm_ss time(timeOfDay);
  const std::string& separator = locale.timeSeparator;
  std::string text = separator + Digits(time.minutes().count(), 2);
  if (seconds == Seconds::Always || time.seconds().count() != 0)
    text += separator + Digits(time.seconds().count(), 2);
  if (!locale.twelveHourClock) return Digits(time.hours().count(), 2) + text;
  return Digits(std::chrono::make12(time.hours()).count(), 1) + text + " " +
         (std::chrono::is_pm(time.hours()) ? locale.pm : locale.am);
}

std::string Written(const DateTime& value, const LocaleConventions& locale, Seconds seconds) {
  std::string text;
  if (value.date) text = DateText(*value.date, locale);
  if (value.date && value.timeOfDay) text += ' ';
  if (value.timeOfDay) text += TimeText(*value.timeOfDay, locale, seconds);
  return text;
}

// For 2026-03-05 and 07:08, which every locale reads.
LocaleConventions PlainConventions() {
  LocaleConventions plain;
  plain.dateOrder = DateOrder::YearMonthDay;
  plain.dateSeparator = "-";
  plain.leadingZeros = true;
  plain.twelveHourClock = false;
  return plain;
}

std::string WrittenReadably(const DateTime& value, const LocaleConventions& locale, Seconds seconds) {
  std::string text = Written(value, locale, seconds);
  // Reads back differently where the locale's separators or marks are empty or alike.
  return ReadDateTime(text, locale) == value ? text : Written(value, PlainConventions(), seconds);
}

}  // namespace

std::string WriteDateTime(const DateTime& value, const LocaleConventions& locale) {
  return WrittenReadably(value, locale, Seconds::UnlessZero);
}

std::string WriteMoment(const DateTime& value, const LocaleConventions& locale) {
  return WrittenReadably(value, locale, Seconds::Always);
}

}  // namespace pellorin
