#include "platform/posix/LocaleFormats.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/Text.h"

namespace pellorin {
namespace {

struct Field {
  char letter;
  bool padded;
  std::string textAfter;
};

// Some letters stand for a whole format.
std::string_view WrittenOut(char letter, std::string_view twelveHourFormat) {
  switch (letter) {
    case 'F':
      return "%Y-%m-%d";
    case 'D':
      return "%m/%d/%y";
    case 'T':
      return "%H:%M:%S";
    case 'R':
      return "%H:%M";
    case 'r':
      return twelveHourFormat;
    default:
      return {};
  }
}

void AppendFields(std::string_view format, std::string_view twelveHourFormat, std::vector<Field>& fields) {
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') {
      if (!fields.empty()) fields.back().textAfter += format[i];
      continue;
    }
    bool padded = true;
    for (++i; i < format.size() && std::string_view("-_0^#EO").find(format[i]) != std::string_view::npos;
         ++i) {
      if (format[i] == '-' || format[i] == '_') padded = false;
    }
    if (i == format.size()) return;
    const std::string_view whole = WrittenOut(format[i], twelveHourFormat);
    if (!whole.empty()) {
      AppendFields(whole, {}, fields);
    } else {
      const bool blankPadded = std::string_view("ekl").find(format[i]) != std::string_view::npos;
      fields.push_back({format[i], padded && !blankPadded, {}});
    }
  }
}

std::vector<Field> FieldsOf(std::string_view format, std::string_view twelveHourFormat) {
  std::vector<Field> fields;
  AppendFields(format, twelveHourFormat, fields);
  return fields;
}

using Place = std::vector<Field>::const_iterator;

Place FindField(const std::vector<Field>& fields, std::string_view letters) {
  return std::find_if(fields.begin(), fields.end(), [letters](const Field& field) {
    return letters.find(field.letter) != std::string_view::npos;
  });
}

// Users type "1. 2. 2026" as "1.2.2026" too: blanks do not belong to the separator.
std::string SeparatorAfter(const Field& field) {
  return std::string(WithoutOuterBlanks(field.textAfter));
}

}  // namespace

std::optional<DateFormat> ParseDateFormat(std::string_view format) {
  const auto fields = FieldsOf(format, {});
  const Place day = FindField(fields, "de");
  const Place month = FindField(fields, "mbBh");
  const Place year = FindField(fields, "Yy");
  if (day == fields.end() || month == fields.end() || year == fields.end()) return std::nullopt;

  DateFormat result{DateOrder::DayMonthYear, "/", false};
  if (year < day && year < month) {
    result.order = DateOrder::YearMonthDay;
    result.separator = "-";
  } else if (month < day) {
    result.order = DateOrder::MonthDayYear;
  }

  const Place first = std::min({day, month, year});
  const bool adjacent = std::max({day, month, year}) - first == 2;
  const std::string separator = SeparatorAfter(*first);
  if (adjacent && month->letter == 'm' && !separator.empty() && SeparatorAfter(first[1]) == separator) {
    result.separator = separator;
  }
  // Month first and a slash is the American form: written without leading zeros, even if the format has them.
  const bool american = result.order == DateOrder::MonthDayYear && result.separator == "/";
  result.leadingZeros = day->padded && month->padded && !american;
  return result;
}

std::optional<TimeFormat> ParseTimeFormat(std::string_view format, std::string_view twelveHourFormat) {
  const auto fields = FieldsOf(format, twelveHourFormat);
  const Place hour = FindField(fields, "HkIl");
  const Place minute = FindField(fields, "M");
  if (hour == fields.end() || minute == fields.end()) return std::nullopt;

  TimeFormat result{":", hour->letter == 'I' || hour->letter == 'l'};
  const std::string separator = SeparatorAfter(*hour);
  const bool secondsAgree =
      minute + 1 == fields.end() || minute[1].letter != 'S' || SeparatorAfter(*minute) == separator;
  if (minute - hour == 1 && !separator.empty() && secondsAgree) result.separator = separator;
  return result;
}

}  // namespace pellorin
