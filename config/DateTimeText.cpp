#include "config/DateTimeText.h"

#include <algorithm>
#include <cstddef>

#include "base/Text.h"
#include "base/TextCase.h"

namespace pellorin {

namespace {

using std::chrono::seconds;
using std::chrono::year_month_day;

// The rest of a text whose letter case is already folded. Reads two-digit years only if it is
// given the present year.
class Cursor {
 public:
  explicit Cursor(std::string_view folded, std::optional<std::chrono::year> presentYear = {})
      : rest_(folded), presentYear_(presentYear) {}

  bool AtEnd() const { return rest_.empty(); }

  bool Skip(std::string_view expected) {
    const std::string folded = FoldCase(expected);
    if (folded.empty() || !rest_.starts_with(folded)) return false;
    rest_.remove_prefix(folded.size());
    return true;
  }

  bool SkipOneBlank() { return Skip(" ") || Skip("\t"); }

  bool SkipBlanks() {
    const std::size_t blanks = std::min(rest_.find_first_not_of(kBlanks), rest_.size());
    rest_.remove_prefix(blanks);
    return blanks != 0;
  }

  // Takes all digits from here on; nothing when they are fewer than `fewest` or more than `most`.
  std::optional<int> Number(std::size_t fewest, std::size_t most) {
    const std::size_t digits = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
    if (digits < fewest || digits > most) return std::nullopt;
    int number = 0;
    for (const char digit : rest_.substr(0, digits)) number = number * 10 + (digit - '0');
    rest_.remove_prefix(digits);
    return number;
  }

  std::optional<int> Year() {
    if (const auto year = Number(4, 4)) return year;
    const auto lastDigits = presentYear_ ? Number(2, 2) : std::nullopt;
    if (!lastDigits) return std::nullopt;
    const int first = int{*presentYear_} - 49;
    return first + ((*lastDigits - first) % 100 + 100) % 100;
  }

 private:
  std::string_view rest_;
  std::optional<std::chrono::year> presentYear_;
};

std::optional<year_month_day> CalendarDate(std::optional<int> year, std::optional<int> month,
                                           std::optional<int> day) {
  constexpr int kFirstYear = 100;
  if (!year || !month || !day || *year < kFirstYear) return std::nullopt;
  const year_month_day date{std::chrono::year{*year}, std::chrono::month{static_cast<unsigned>(*month)},
                            std::chrono::day{static_cast<unsigned>(*day)}};
  if (!date.ok()) return std::nullopt;
  return date;
}

// The forms of a date. Each moves the cursor to the end of the date. After a failure do not use it again.

std::optional<year_month_day> ReadIsoDate(Cursor& cursor, const LocaleConventions&) {
  const auto year = cursor.Number(4, 4);
  if (!cursor.Skip("-")) return std::nullopt;
  const auto month = cursor.Number(2, 2);
  if (!cursor.Skip("-")) return std::nullopt;
  return CalendarDate(year, month, cursor.Number(2, 2));
}

std::optional<year_month_day> ReadLocaleDate(Cursor& cursor, const LocaleConventions& locale) {
  const bool yearFirst = locale.dateOrder == DateOrder::YearMonthDay;
  const auto first = yearFirst ? cursor.Year() : cursor.Number(1, 2);
  if (!cursor.Skip(locale.dateSeparator)) return std::nullopt;
  const auto second = cursor.Number(1, 2);
  if (!cursor.Skip(locale.dateSeparator)) return std::nullopt;
  const auto third = yearFirst ? cursor.Number(1, 2) : cursor.Year();
  switch (locale.dateOrder) {
    case DateOrder::MonthDayYear:
      return CalendarDate(third, first, second);
    case DateOrder::DayMonthYear:
      return CalendarDate(third, second, first);
    case DateOrder::YearMonthDay:
      return CalendarDate(first, second, third);
  }
  return std::nullopt;
}

// Reads the blanks after the name, too: they tell a short name from the start of a long one.
std::optional<int> ReadMonthName(Cursor& cursor, const LocaleConventions& locale) {
  static const LocaleConventions english;
  for (const auto* names :
       {&locale.longMonthNames, &locale.shortMonthNames, &english.longMonthNames, &english.shortMonthNames}) {
    for (std::size_t i = 0; i < names->size(); ++i) {
      Cursor attempt = cursor;
      if (!attempt.Skip((*names)[i]) || !attempt.SkipBlanks()) continue;
      cursor = attempt;
      return static_cast<int>(i) + 1;
    }
  }
  return std::nullopt;
}

std::optional<year_month_day> ReadMonthNameFirst(Cursor& cursor, const LocaleConventions& locale) {
  const auto month = ReadMonthName(cursor, locale);
  const auto day = cursor.Number(1, 2);
  if (!cursor.Skip(",") || !cursor.SkipBlanks()) return std::nullopt;
  return CalendarDate(cursor.Year(), month, day);
}

std::optional<year_month_day> ReadDayThenMonthName(Cursor& cursor, const LocaleConventions& locale) {
  const auto day = cursor.Number(1, 2);
  if (!cursor.SkipBlanks()) return std::nullopt;
  const auto month = ReadMonthName(cursor, locale);
  return CalendarDate(cursor.Year(), month, day);
}

std::optional<year_month_day> ReadDate(Cursor& cursor, const LocaleConventions& locale) {
  for (const auto form : {ReadIsoDate, ReadLocaleDate, ReadMonthNameFirst, ReadDayThenMonthName}) {
    Cursor attempt = cursor;
    if (const auto date = form(attempt, locale)) {
      cursor = attempt;
      return date;
    }
  }
  return std::nullopt;
}

struct ClockReading {
  int hour = 0;
  int minute = 0;
  int second = 0;
};

std::optional<ClockReading> ReadClock(Cursor& cursor, std::size_t fewestHourDigits,
                                      std::string_view separator) {
  const auto hour = cursor.Number(fewestHourDigits, 2);
  if (!hour || !cursor.Skip(separator)) return std::nullopt;
  const auto minute = cursor.Number(2, 2);
  std::optional<int> second = 0;
  if (cursor.Skip(separator)) second = cursor.Number(2, 2);
  if (!minute || !second || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
  return ClockReading{*hour, *minute, *second};
}

seconds SinceMidnight(const ClockReading& clock, int hour) {
  return std::chrono::hours{hour} + std::chrono::minutes{clock.minute} + seconds{clock.second};
}

bool EndsWithMark(Cursor cursor, std::string_view mark) {
  return cursor.Skip(mark) && cursor.AtEnd();
}

// A time is always the last part of a text, so these read to its end.

std::optional<seconds> ReadHalfOfDay(const ClockReading& clock, Cursor cursor,
                                     const LocaleConventions& locale) {
  cursor.SkipOneBlank();
  const bool am = EndsWithMark(cursor, locale.am) || EndsWithMark(cursor, "AM");
  const bool pm = EndsWithMark(cursor, locale.pm) || EndsWithMark(cursor, "PM");
  if (am == pm || clock.hour < 1 || clock.hour > 12) return std::nullopt;
  return SinceMidnight(clock, clock.hour % 12 + (pm ? 12 : 0));
}

std::optional<seconds> ReadHourAlone(Cursor cursor, const LocaleConventions& locale) {
  const auto hour = cursor.Number(1, 2);
  if (!hour) return std::nullopt;
  return ReadHalfOfDay({*hour, 0, 0}, cursor, locale);
}

std::optional<seconds> ReadTimeSeparatedBy(std::string_view separator, Cursor cursor,
                                           const LocaleConventions& locale) {
  const auto clock = ReadClock(cursor, 1, separator);
  if (!clock) return std::nullopt;
  if (cursor.AtEnd()) return SinceMidnight(*clock, clock->hour);
  return ReadHalfOfDay(*clock, cursor, locale);
}

std::optional<seconds> ReadTime(Cursor cursor, const LocaleConventions& locale) {
  if (const auto time = ReadTimeSeparatedBy(":", cursor, locale)) return time;
  if (const auto time = ReadTimeSeparatedBy(locale.timeSeparator, cursor, locale)) return time;
  return ReadHourAlone(cursor, locale);
}

std::optional<seconds> ReadIsoTime(Cursor cursor) {
  const auto clock = ReadClock(cursor, 2, ":");
  if (!clock || !cursor.AtEnd()) return std::nullopt;
  return SinceMidnight(*clock, clock->hour);
}

std::optional<DateTime> Read(std::string_view text, const LocaleConventions& locale,
                             std::optional<std::chrono::year> presentYear) {
  const std::string folded = FoldCase(WithoutOuterBlanks(text));
  if (const auto time = ReadTime(Cursor(folded), locale)) return DateTime{std::nullopt, time};

  Cursor cursor(folded, presentYear);
  const auto date = ReadDate(cursor, locale);
  if (!date) return std::nullopt;
  if (cursor.AtEnd()) return DateTime{date, std::nullopt};

  std::optional<seconds> time;
  if (cursor.SkipBlanks()) {
    time = ReadTime(cursor, locale);
  } else if (Cursor iso(folded); ReadIsoDate(iso, locale) && iso.Skip("T")) {
    time = ReadIsoTime(iso);
  }
  if (!time) return std::nullopt;
  return DateTime{date, time};
}

}  // namespace

std::optional<DateTime> ReadDateTime(std::string_view text, const LocaleConventions& locale) {
  return Read(text, locale, std::nullopt);
}

std::optional<DateTime> ReadTypedDateTime(std::string_view text, const LocaleConventions& locale,
                                          std::chrono::year presentYear) {
  return Read(text, locale, presentYear);
}

bool IsDate(std::string_view text, const LocaleConventions& locale) {
  return ReadDateTime(text, locale).has_value();
}

std::chrono::sys_seconds MomentOf(const DateTime& value) {
  using namespace std::chrono_literals;
  constexpr year_month_day kDayOfTimesAlone = 1899y / 12 / 30;
  return std::chrono::sys_days{value.date.value_or(kDayOfTimesAlone)} + value.timeOfDay.value_or(0s);
}

}  // namespace pellorin
