// Converts days between Qt's form and the store's.
#pragma once

#include <QDate>
#include <chrono>

namespace pellorin {

inline std::chrono::year_month_day DayOf(const QDate& date) {
  return {std::chrono::year{date.year()}, std::chrono::month{static_cast<unsigned>(date.month())},
          std::chrono::day{static_cast<unsigned>(date.day())}};
}

inline QDate QtDayOf(const std::chrono::year_month_day& day) {
  return {int{day.year()}, static_cast<int>(unsigned{day.month()}), static_cast<int>(unsigned{day.day()})};
}

}  // namespace pellorin
