#include "config/DateTimeText.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "base/Text.h"
#include "config/DateTimeWriting.h"

using namespace pellorin;

namespace {

const LocaleConventions kAmerican;

LocaleConventions Local(DateOrder order, const std::string& dateSeparator, const std::string& am = "",
                        const std::string& pm = "", bool twelveHourClock = false) {
  LocaleConventions locale;
  locale.dateOrder = order;
  locale.dateSeparator = dateSeparator;
  locale.twelveHourClock = twelveHourClock;
  locale.am = am;
  locale.pm = pm;
  return locale;
}

LocaleConventions Dotted(const std::string& timeSeparator) {
  auto locale = Local(DateOrder::DayMonthYear, ".");
  locale.timeSeparator = timeSeparator;
  locale.shortMonthNames[2] = "Mär";
  locale.longMonthNames[2] = "März";
  return locale;
}

const LocaleConventions kGerman = Dotted(":");
const LocaleConventions kFinnish = Dotted(".");
const LocaleConventions kSwedish = Local(DateOrder::YearMonthDay, "-");
const LocaleConventions kGreek = Local(DateOrder::DayMonthYear, "/", "πμ", "μμ", true);

// "2026-11-22", "15:04:05", both with a blank between, or "none". As typed where the present year is given.
std::string Reading(const std::string& text, const LocaleConventions& locale, int presentYear = 0) {
  auto value = ReadDateTime(text, locale);
  EXPECT_EQ(IsDate(text, locale), value.has_value());
  if (presentYear != 0) value = ReadTypedDateTime(text, locale, std::chrono::year(presentYear));
  if (!value) return "none";
  std::array<char, 32> reading{};
  if (const auto& date = value->date)
    std::snprintf(reading.data(), reading.size(), "%04d-%02u-%02u", int(date->year()),
                  unsigned(date->month()), unsigned(date->day()));
  std::string shown = reading.data();
  if (!value->timeOfDay) return shown;
  const std::chrono::hh_mm_ss time(*value->timeOfDay);
  std::snprintf(reading.data(), reading.size(), "%02d:%02d:%02d", int(time.hours().count()),
                int(time.minutes().count()), int(time.seconds().count()));
  return shown + (value->date ? " " : "") + reading.data();
}

using Rows = std::vector<std::pair<const char*, const char*>>;

void Check(const LocaleConventions& locale, const Rows& rows) {
  for (const auto& [text, reading] : rows) EXPECT_EQ(Reading(text, locale), reading) << text;
}

}  // namespace

TEST(DateTimeTextTest, ReadsAmericanForms) {
  Check(kAmerican, {{"11/22/2026", "2026-11-22"},
                    {" 1/5/2026\t", "2026-01-05"},
                    {"02/29/2028", "2028-02-29"},
                    {"11/22/2026 3:04:05 PM", "2026-11-22 15:04:05"},
                    {"11/22/2026 \t 23:05", "2026-11-22 23:05:00"},
                    {"12:00 AM", "00:00:00"},
                    {"12:30 PM", "12:30:00"},
                    {"3:04pm", "15:04:00"},
                    {"11/22/2026 3 PM", "2026-11-22 15:00:00"}});
}

TEST(DateTimeTextTest, ReadsIsoAndMonthNamesEverywhere) {
  for (const auto& locale : {kAmerican, kGerman, kSwedish, kFinnish}) {
    Check(locale, {{"2026-11-22 3:04 PM", "2026-11-22 15:04:00"},
                   {"2026-11-22T05:04:03", "2026-11-22 05:04:03"},
                   {"0100-01-01", "0100-01-01"},
                   {"9999-12-31", "9999-12-31"},
                   {"Nov 22, 2026", "2026-11-22"},
                   {"november 22, 2026 23:05", "2026-11-22 23:05:00"},
                   {"5 MAY 2026 3:04 AM", "2026-05-05 03:04:00"}});
  }
}

TEST(DateTimeTextTest, ReadsTheLocalesOwnForms) {
  Check(kGerman, {{"22.11.2026", "2026-11-22"},
                  {"5.3.2026 07:08:09", "2026-03-05 07:08:09"},
                  {"5 MÄRZ 2026", "2026-03-05"},
                  {"mär 5, 2026", "2026-03-05"},
                  {"11.22.2026", "none"},
                  {"11/22/2026", "none"}});
  Check(kSwedish, {{"2026-3-5", "2026-03-05"}, {"22-11-2026", "none"}, {"2026-3-5T10:00", "none"}});
  Check(kFinnish, {{"22.11.2026 15.04.05", "2026-11-22 15:04:05"},
                   {"7.30", "07:30:00"},
                   {"15:04", "15:04:00"},
                   {"15.04:05", "none"}});
  Check(Local(DateOrder::DayMonthYear, "/", "πμ", "μμ"), {{"22/11/2026 3:04 ΜΜ", "2026-11-22 15:04:00"},
                                                          {"12:30πμ", "00:30:00"},
                                                          {"3 μμ", "15:00:00"},
                                                          {"3:04 PM", "15:04:00"},
                                                          {"11/22/2026", "none"}});
}

TEST(DateTimeTextTest, ReadsNothingIntoOtherTexts) {
  const std::string times =
      "|  |abc|7|15|24:00|12:60|12:00:60|1:2|1:02:3|012:00|1:002|0:30 PM|13 PM|0 AM|3 P|3  PM|3:04 PMx|3:04:|"
      ":30|-1:00|15.04";
  const std::string dates =
      "13/32/2026|22/11/2026|11/22/26|11/22/02026|11/22/2026x|11//2026|011/22/2026|11-22-2026|"
      "11 / 22 / 2026|+1/22/2026|11/22|2026-02-30|2027-02-29|2026-00-10|2026-11-00|2026-13-01|2026-1-5|"
      "0099-01-01|10000-01-01|2026/11/22|20261122|Nov 2026|Nov 22 2026|Nov 22,2026|Novem 22, 2026|"
      "Feb 30, 2026|Nov 22, 26|22 Nov, 2026|22Nov 2026";
  const std::string both =
      "2026-11-22T|2026-11-22T5:04|2026-11-22T25:00|2026-11-22T03:04 PM|2026-11-22 T15:04|11/22/2026T15:04|"
      "11/22/202615:04|11/22/2026 25:00|11/22/2026 3|23:05 11/22/2026";
  for (const std::string& text : SplitAt("|", times + "|" + dates + "|" + both))
    EXPECT_EQ(Reading(text, kAmerican), "none") << text;
}

TEST(DateTimeTextTest, ReadsTwoDigitYearsOnlyAsTyped) {
  const std::tuple<LocaleConventions, int, const char*, const char*> rows[] = {
      {kAmerican, 2026, "11/22/26", "2026-11-22"},   {kAmerican, 2026, "1/1/76", "2076-01-01"},
      {kAmerican, 2026, "12/31/77", "1977-12-31"},   {kAmerican, 2051, "1/1/01", "2101-01-01"},
      {kAmerican, 2051, "1/1/02", "2002-01-01"},     {kAmerican, 2026, "2/29/27", "none"},
      {kAmerican, 2026, "11/22/6", "none"},          {kAmerican, 2026, "11/22/026", "none"},
      {kAmerican, 2026, "Nov 22, 26", "2026-11-22"}, {kGerman, 1999, "22.11.49 3 PM", "2049-11-22 15:00:00"},
      {kSwedish, 1999, "50-11-22", "1950-11-22"}};
  for (const auto& [locale, presentYear, typed, reading] : rows) {
    EXPECT_EQ(Reading(typed, locale, presentYear), reading) << typed << " in " << presentYear;
    EXPECT_EQ(Reading(typed, locale), "none") << typed;
  }
}

TEST(DateTimeTextTest, WritesWhatItReadsAsTheLocaleDoes) {
  LocaleConventions padded = kGerman;
  padded.leadingZeros = true;
  const auto ambiguous = Local(DateOrder::YearMonthDay, "", "PM", "AM", true);
  const auto mute = Local(DateOrder::MonthDayYear, "/", "", "", true);
  const struct {
    const LocaleConventions& locale;
    const char *given, *written;
  } rows[] = {{kAmerican, "2026-11-02", "11/2/2026"},
              {kAmerican, "0150-01-05 0:00", "1/5/0150 12:00 AM"},
              {kAmerican, "23:05", "11:05 PM"},
              {kAmerican, "12:00:07", "12:00:07 PM"},
              {kAmerican, "2026-11-22T23:05:07", "11/22/2026 11:05:07 PM"},
              {kGerman, "2026-03-05 7:08", "5.3.2026 07:08"},
              {padded, "2026-03-05", "05.03.2026"},
              {padded, "0:00:01", "00:00:01"},
              {kSwedish, "2026-03-05 3:04 PM", "2026-3-5 15:04"},
              {kFinnish, "2026-11-22 15:04:05", "22.11.2026 15.04.05"},
              {kGreek, "0:30", "12:30 πμ"},
              {ambiguous, "9999-12-31T23:59:59", "9999-12-31 23:59:59"},
              {mute, "0100-01-01 13:00:01", "0100-01-01 13:00:01"}};
  for (const auto& [locale, given, written] : rows) {
    const auto value = ReadDateTime(given, locale);
    ASSERT_TRUE(value) << given;
    EXPECT_EQ(WriteDateTime(*value, locale), written) << given;
    EXPECT_EQ(ReadDateTime(written, locale), value) << written;
  }
}
