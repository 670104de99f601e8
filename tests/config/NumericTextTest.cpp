#include "config/NumericText.h"

#include <gtest/gtest.h>

#include <string>

using namespace pellorin;

TEST(NumericTextTest, TellsNumbersFromOtherTexts) {
  const LocaleConventions american;
  for (const char* text : {"0", "25", " 30\t", "-1", "+1", "-.5", "5.", "1,000", "1,", "1,2,3", "1,000.5",
                           "12,.5", "1E+3", "1.5e-10", ".5e3", "5.e3", "007", "1e999"})
    EXPECT_TRUE(IsNumber(text, american)) << text;
  for (const char* text : {"",     " ",   "+",   "-",    ".",    ",",     "-.",    "25a",        "a25",
                           "--1",  "1-",  "- 1", "1 0",  "1\n",  ",1",    "1,,0",  "1.2.3",      "1.000,5",
                           "1.0,", ".,5", "e3",  "1e",   "1e+",  "1e+-3", "1e1.5", "1e1,0",      "1ee3",
                           ".e3",  "inf", "nan", "0x10", "&H10", "$5",    "(5)",   "1\u00A0000", "\u0661"})
    EXPECT_FALSE(IsNumber(text, american)) << text;
  EXPECT_FALSE(IsNumber(std::string_view("1\0", 2), american));
  for (const auto& [text, number] : {std::pair(" +1,500.5\t", 1500.5), {"-.5E+1", -5.}, {"1e-999", 0.}})
    EXPECT_EQ(ReadNumber(text, american), number) << text;
}

TEST(NumericTextTest, FollowsTheLocalesSeparators) {
  LocaleConventions german;
  german.thousandsSeparator = ".";
  german.decimalSeparator = ",";
  for (const char* text : {"1.000,5", "1.000", ",5", "5,", "-1.234.567,89e2"})
    EXPECT_TRUE(IsNumber(text, german)) << text;
  for (const char* text : {"1,000.5", "1,2,3", ".5", "1\u202F000"})
    EXPECT_FALSE(IsNumber(text, german)) << text;
  EXPECT_EQ(ReadNumber("-1.000,5e1", german), -10005);

  LocaleConventions french = german;
  french.thousandsSeparator = "\u202F";
  for (const char* text : {"1\u202F000,5", "1\u202F000\u202F000"})
    EXPECT_TRUE(IsNumber(text, french)) << text;
  for (const char* text : {"\u202F1", "1\u202F\u202F000", "1\xE2\x80", "1.000", "1 000", "1,0\u202F0"})
    EXPECT_FALSE(IsNumber(text, french)) << text;

  LocaleConventions ungrouped;
  ungrouped.thousandsSeparator = "";
  EXPECT_FALSE(IsNumber("1,000", ungrouped));
}
