#include "config/NumericText.h"

#include <gtest/gtest.h>

#include <string>

using namespace pellorin;

namespace {

LocaleConventions Separated(const std::string& thousands, const std::string& decimal) {
  LocaleConventions locale;
  locale.thousandsSeparator = thousands;
  locale.decimalSeparator = decimal;
  return locale;
}

}  // namespace

TEST(NumericTextTest, TakesNumbers) {
  const LocaleConventions american;
  for (const auto* text : {"0",     "25",
                           " 30\t", "-1",
                           "+1",    "-.5",
                           ".5",    "5.",
                           "1.25",  "1,000",
                           "1,",    "1,00",
                           "1,2,3", "1,000.5",
                           "12,.5", "1e3",
                           "1E+3",  "1.5e-10",
                           ".5e3",  "5.e3",
                           "007",   "123456789012345678901234567890",
                           "1e999"})
    EXPECT_TRUE(IsNumber(text, american)) << text;
}

TEST(NumericTextTest, RefusesEverythingElse) {
  const LocaleConventions american;
  for (const auto* text :
       {"",      " ",       "+",          "-",     ".",     ",",        "-.",   "abc",   "25a",
        "a25",   "--1",     "+-1",        "1-",    "- 1",   "1 0",      "1\n",  ",1",    "1,,0",
        "1.2.3", "1.000,5", "1.0,",       ".,5",   "e3",    "1e",       "1e+",  "1e+-3", "1e1.5",
        "1e1,0", "1ee3",    ".e3",        "inf",   "nan",   "infinity", "0x10", "&H10",  "$5",
        "(5)",   "5%",      "1\u00A0000", "1'000", "\u0661"})
    EXPECT_FALSE(IsNumber(text, american)) << text;
  EXPECT_FALSE(IsNumber(std::string_view("1\0", 2), american));
}

TEST(NumericTextTest, FollowsTheLocalesSeparators) {
  const auto german = Separated(".", ",");
  for (const auto* text : {"1.000,5", "1.000", ",5", "5,", "-1.234.567,89e2"})
    EXPECT_TRUE(IsNumber(text, german)) << text;
  for (const auto* text : {"1,000.5", "1,2,3", ".5", "1\u202F000"})
    EXPECT_FALSE(IsNumber(text, german)) << text;

  const auto french = Separated("\u202F", ",");
  for (const auto* text : {"1\u202F000,5", "1\u202F", "1\u202F000\u202F000"})
    EXPECT_TRUE(IsNumber(text, french)) << text;
  for (const auto* text : {"\u202F1", "1\u202F\u202F000", "1\xE2\x80", "1.000", "1 000", "1,0\u202F0"})
    EXPECT_FALSE(IsNumber(text, french)) << text;

  const auto ungrouped = Separated("", ".");
  EXPECT_TRUE(IsNumber("1000.5", ungrouped));
  EXPECT_FALSE(IsNumber("1,000", ungrouped));
}
