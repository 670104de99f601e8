#include "config/DateTimeText.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

using namespace pellorin;

namespace {

LocaleConventions American() {
  return {};
}

LocaleConventions Numeric(DateOrder order, const std::string& separator) {
  LocaleConventions locale;
  locale.dateOrder = order;
  locale.dateSeparator = separator;
  locale.twelveHourClock = false;
  locale.am.clear();
  locale.pm.clear();
  return locale;
}

LocaleConventions German() {
  auto locale = Numeric(DateOrder::DayMonthYear, ".");
  locale.shortMonthNames[2] = "Mär";
  locale.longMonthNames[2] = "März";
  locale.longMonthNames[9] = "Oktober";
  return locale;
}

LocaleConventions British() {
  auto locale = Numeric(DateOrder::DayMonthYear, "/");
  locale.am = "am";
  locale.pm = "pm";
  return locale;
}

LocaleConventions Swedish() {
  return Numeric(DateOrder::YearMonthDay, "-");
}

LocaleConventions Finnish() {
  auto locale = Numeric(DateOrder::DayMonthYear, ".");
  locale.timeSeparator = ".";
  return locale;
}

LocaleConventions Greek() {
  auto locale = Numeric(DateOrder::DayMonthYear, "/");
  locale.am = "πμ";
  locale.pm = "μμ";
  return locale;
}

// "2026-11-22", "15:04:05", both with a blank between, or "none".
std::string Reading(const std::string& text, const LocaleConventions& locale) {
  const auto value = ReadDateTime(text, locale);
  EXPECT_EQ(IsDate(text, locale), value.has_value());
  if (!value) return "none";
  char buffer[64] = "";
  std::string result;
  if (value->date) {
    std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02u", static_cast<int>(value->date->year()),
                  static_cast<unsigned>(value->date->month()), static_cast<unsigned>(value->date->day()));
    result = buffer;
  }
  if (value->timeOfDay) {
    const std::chrono::hh_mm_ss time(*value->timeOfDay);
    std::snprintf(buffer, sizeof buffer, "%s%02ld:%02ld:%02ld", value->date ? " " : "",
                  static_cast<long>(time.hours().count()), static_cast<long>(time.minutes().count()),
                  static_cast<long>(time.seconds().count()));
    result += buffer;
  }
  return result;
}

struct Case {
  std::string text;
  std::string reading;
};

void Check(const LocaleConventions& locale, const std::vector<Case>& cases) {
  for (const auto& [text, reading] : cases) EXPECT_EQ(Reading(text, locale), reading) << text;
}

}  // namespace

TEST(DateTimeTextTest, ReadsAmericanForms) {
  Check(American(), {{"11/22/2026", "2026-11-22"},
                     {" 1/5/2026\t", "2026-01-05"},
                     {"02/29/2028", "2028-02-29"},
                     {"11/22/2026 3:04:05 PM", "2026-11-22 15:04:05"},
                     {"11/22/2026 \t 23:05", "2026-11-22 23:05:00"},
                     {"12:00 AM", "00:00:00"},
                     {"12:30 PM", "12:30:00"},
                     {"11:59:59 PM", "23:59:59"},
                     {"3:04pm", "15:04:00"},
                     {"01:02:03 aM", "01:02:03"},
                     {"0:00", "00:00:00"},
                     {"23:05", "23:05:00"}});
}

TEST(DateTimeTextTest, ReadsIsoAndMonthNamesEverywhere) {
  for (const auto& locale : {American(), German(), British(), Swedish(), Finnish()}) {
    Check(locale, {{"2026-11-22", "2026-11-22"},
                   {"2026-11-22 3:04 PM", "2026-11-22 15:04:00"},
                   {"2026-11-22T15:04", "2026-11-22 15:04:00"},
                   {"2026-11-22T05:04:03", "2026-11-22 05:04:03"},
                   {"0100-01-01", "0100-01-01"},
                   {"9999-12-31", "9999-12-31"},
                   {"Nov 22, 2026", "2026-11-22"},
                   {"november 22, 2026 23:05", "2026-11-22 23:05:00"},
                   {"22 NOV 2026", "2026-11-22"},
                   {"5 May 2026 3:04 AM", "2026-05-05 03:04:00"},
                   {"22 November 2026", "2026-11-22"}});
  }
}

TEST(DateTimeTextTest, ReadsTheLocalesOwnForms) {
  Check(German(), {{"22.11.2026", "2026-11-22"},
                   {"5.3.2026 07:08:09", "2026-03-05 07:08:09"},
                   {"5 MÄRZ 2026", "2026-03-05"},
                   {"mär 5, 2026", "2026-03-05"},
                   {"3 Oktober 2026", "2026-10-03"},
                   {"11.22.2026", "none"},
                   {"11/22/2026", "none"},
                   {"22. November 2026", "none"}});
  Check(British(), {{"22/11/2026 3:04 pm", "2026-11-22 15:04:00"}, {"11/22/2026", "none"}});
  Check(Swedish(), {{"2026-3-5", "2026-03-05"}, {"22-11-2026", "none"}, {"2026-3-5T10:00", "none"}});
  Check(Finnish(), {{"22.11.2026 15.04.05", "2026-11-22 15:04:05"},
                    {"7.30", "07:30:00"},
                    {"15:04", "15:04:00"},
                    {"15.04:05", "none"}});
  Check(Greek(), {{"3:04 ΜΜ", "15:04:00"}, {"12:30πμ", "00:30:00"}, {"3:04 PM", "15:04:00"}});
}

TEST(DateTimeTextTest, ReadsNothingIntoOtherTexts) {
  const std::vector<std::string> texts = {"",
                                          "  ",
                                          "7",
                                          "2026",
                                          "20261122",
                                          "abc",
                                          "25:00",
                                          "24:00",
                                          "12:60",
                                          "12:00:60",
                                          "1:2",
                                          "1:02:3",
                                          "012:00",
                                          "1:002",
                                          "0:30 PM",
                                          "13:00 PM",
                                          "13:00 AM",
                                          "3 PM",
                                          "3:04  PM",
                                          "3:04 P",
                                          "3:04 PMx",
                                          "3:04:",
                                          ":30",
                                          "-1:00",
                                          "3:04 PM AM",
                                          "15.04",
                                          "13/32/2026",
                                          "22/11/2026",
                                          "11/22/26",
                                          "11/22/02026",
                                          "11/22",
                                          "11/22/2026x",
                                          "11//2026",
                                          "011/22/2026",
                                          "11-22-2026",
                                          "11.22.2026",
                                          "11 / 22 / 2026",
                                          "+1/22/2026",
                                          "2026-02-30",
                                          "2027-02-29",
                                          "2026-00-10",
                                          "2026-11-00",
                                          "2026-13-01",
                                          "2026-1-5",
                                          "0099-01-01",
                                          "0000-01-01",
                                          "10000-01-01",
                                          "2026/11/22",
                                          "2026-11-22T",
                                          "2026-11-22T5:04",
                                          "2026-11-22T25:00",
                                          "2026-11-22T03:04 PM",
                                          "2026-11-22 T15:04",
                                          "11/22/2026T15:04",
                                          "11/22/202615:04",
                                          "11/22/2026 25:00",
                                          "11/22/2026 noon",
                                          "23:05 11/22/2026",
                                          "Nov 22 2026",
                                          "Nov 22,2026",
                                          "Nov22, 2026",
                                          "Novem 22, 2026",
                                          "Feb 30, 2026",
                                          "Nov 22, 26",
                                          "22 Nov, 2026",
                                          "22Nov 2026",
                                          "Nov 2026",
                                          "Sunday"};
  for (const auto& text : texts) EXPECT_EQ(Reading(text, American()), "none") << text;
}

TEST(DateTimeTextTest, OrdersMoments) {
  const std::vector<std::string> ascending = {
      "0100-01-01", "0:00", "11:59:59 PM", "12/31/1899", "11/22/2026", "11/22/2026 0:01", "2026-11-23"};
  for (std::size_t i = 1; i < ascending.size(); ++i) {
    const auto earlier = ReadDateTime(ascending[i - 1], American());
    const auto later = ReadDateTime(ascending[i], American());
    ASSERT_TRUE(earlier && later);
    EXPECT_LT(MomentOf(*earlier), MomentOf(*later)) << ascending[i];
  }
  EXPECT_EQ(MomentOf(*ReadDateTime("0:00", American())), MomentOf(*ReadDateTime("12/30/1899", American())));
  EXPECT_EQ(MomentOf(*ReadDateTime("1970-01-02", American())).time_since_epoch(), std::chrono::hours(24));
}
