#include "platform/SystemLocale.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/posix/LocaleFormats.h"

using namespace pellorin;

namespace {

std::string DateReading(const std::string& format) {
  const auto result = ParseDateFormat(format);
  if (!result) return "none";
  const char* orders[] = {"MDY", "DMY", "YMD"};
  return orders[static_cast<int>(result->order)] + (" " + result->separator) +
         (result->leadingZeros ? " 05" : " 5");
}

std::string TimeReading(const std::string& format, const std::string& twelveHourFormat = "") {
  const auto result = ParseTimeFormat(format, twelveHourFormat);
  return result ? (result->twelveHourClock ? "12 " : "24 ") + result->separator : "none";
}

}  // namespace

TEST(SystemLocaleTest, UnderstandsDateFormats) {
  const std::pair<const char*, const char*> cases[] = {
      {"%m/%d/%Y", "MDY / 5"},      {"%m-%d-%Y", "MDY - 05"},      {"%d.%m.%Y.", "DMY . 05"},
      {"%e.%m.%Y", "DMY . 5"},      {"%a %d. %m. %Y", "DMY . 05"}, {"%F", "YMD - 05"},
      {"%Oy/%Om/%Od", "YMD / 05"},  {"%Y年%m月%d日", "YMD - 05"},  {"%d %b, %Y", "DMY / 05"},
      {"%A, %B %d, %Y", "MDY / 5"}, {"%d/%m-%Y", "DMY / 05"},      {"%m/%Y", "none"},
      {"%d.%m.%-", "none"},
  };
  for (const auto& [format, reading] : cases) EXPECT_EQ(DateReading(format), reading) << format;
}

TEST(SystemLocaleTest, UnderstandsTimeFormats) {
  EXPECT_EQ(TimeReading("kl. %H.%M %z"), "24 .");
  EXPECT_EQ(TimeReading("%p%I.%M.%S %Z"), "12 .");
  EXPECT_EQ(TimeReading("%r", "%l:%M:%S %p"), "12 :");
  EXPECT_EQ(TimeReading("%H時%M分%S秒"), "24 :");
  EXPECT_EQ(TimeReading("%r", "%r"), "none");
  EXPECT_EQ(TimeReading("%p %I"), "none");
}

TEST(SystemLocaleTest, TakesAmericanConventionsWhereThereAreNone) {
  for (const auto* name : {"C", "", "no such locale"}) {
    SCOPED_TRACE(name);
    ::setenv("LC_ALL", name, 1);
    const auto conventions = SystemLocaleConventions();
    EXPECT_EQ(conventions.decimalSeparator + conventions.thousandsSeparator, ".,");
    EXPECT_EQ(conventions.dateOrder, DateOrder::MonthDayYear);
    EXPECT_EQ(conventions.dateSeparator + conventions.timeSeparator, "/:");
    EXPECT_TRUE(conventions.twelveHourClock);
    EXPECT_FALSE(conventions.leadingZeros);
    EXPECT_EQ(conventions.am + conventions.pm, "AMPM");
    EXPECT_EQ(conventions.longMonthNames[10] + conventions.shortMonthNames[10], "NovemberNov");
  }
}

TEST(SystemLocaleTest, NamesEachLocaleThatIsNotInstalledOnce) {
  using Names = std::vector<std::string>;
  for (const auto& [locale, missing] : {std::pair("xx_YY", Names{"xx_YY"}), {"C.UTF-8", Names{}}}) {
    ::setenv("LC_ALL", locale, 1);
    EXPECT_EQ(LocalesNotInstalled(), missing);
  }
  ::setenv("LC_TIME", "no_time", 1);
  EXPECT_EQ(LocalesNotInstalled(), Names{}) << "LC_ALL wins over LC_TIME";
  ::unsetenv("LC_ALL");
  EXPECT_EQ(LocalesNotInstalled(), Names{"no_time"});
  ::unsetenv("LC_TIME");
}
