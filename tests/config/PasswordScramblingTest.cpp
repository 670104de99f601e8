#include "config/PasswordScrambling.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "config/RandomGenerator.h"
#include "platform/AnsiText.h"
#include "platform/NumberedError.h"
#include "tests/support/TestData.h"

using namespace pellorin;

namespace {

struct Vector {
  std::string clear;
  std::string stored;
};

std::string Failure(std::string (*operation)(std::string_view, std::string_view), std::string_view text) {
  try {
    return "no failure: " + operation(text, kPasswordKey);
  } catch (const NumberedError& error) {
    return std::to_string(error.Number()) + " " + error.Source() +
           (error.Description().empty() ? " (nothing said)" : "");
  }
}

}  // namespace

TEST(RandomGeneratorTest, GivesTheValuesOfTheRuntime) {
  RandomGenerator fresh;
  for (const float expected : {0.7055475F, 0.533424F, 0.5795186F, 0.2895625F, 0.301948F, 0.7747401F})
    EXPECT_NEAR(fresh.Next(), expected, 5e-8F);

  RandomGenerator reseeded;
  EXPECT_NEAR(reseeded.NextFrom(-1.0F), 0.224007F, 5e-7F);
  const auto state = reseeded.State();
  for (const float zero : {0.0F, -0.0F}) EXPECT_NEAR(reseeded.NextFrom(zero), 0.224007F, 5e-7F);
  EXPECT_EQ(reseeded.State(), state) << "zero asks for the last value again";
}

TEST(RandomGeneratorTest, ReachesTheStateOfThePasswordKeyFromAnyHistory) {
  for (const int stepsBefore : {0, 1, 1000}) {
    RandomGenerator generator;
    for (int i = 0; i < stepsBefore; ++i) generator.NextByte();
    generator.Randomize(static_cast<double>(generator.NextFrom(-1.0F)));
    for (const char character : kPasswordKey) {
      const float product = generator.Next() * static_cast<float>(character);
      generator.Randomize(static_cast<double>(generator.NextFrom(-product)));
    }
    EXPECT_EQ(generator.State(), 0x4138BDU) << stepsBefore;
  }
}

TEST(PasswordScramblingTest, AgreesWithTheServiceOnEveryVector) {
  const auto rows = test::ReadTable(TEST_DATA "/scramble_vectors.tsv");
  ASSERT_EQ(rows.size(), 31U);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 5U);
    SCOPED_TRACE(row[0] + ": " + row[2]);
    const std::string clear = AnsiToUtf8(test::FromHex(row[3]));
    const std::string stored = AnsiToUtf8(test::FromHex(row[4]));
    EXPECT_EQ(DecryptString(stored, kPasswordKey), clear);
    if (row[1] == "both") {
      EXPECT_EQ(EncryptString(clear, kPasswordKey), stored);
    }
  }
}

TEST(PasswordScramblingTest, StoresOddLengthsAndWesternLetters) {
  const std::vector<Vector> vectors = {
      {"a", "u["},
      {"abc", "ulf\\"},
      {"Secr3", "Cqf\\Gzs"},
      {"secret!", "cqf\\Gdlxxk"},
      {"P@ssw0rd9", "FNv\\HvpwibAc"},
      {"correct horse", "swu\\Gdaxc^RhAIG\\L["},
      {"\u20AC", "VK"},
      {"\u00FF\u00FF\u00FF\u00FF\u00FF\u00FF\u00FF", "_grF<nuR^;"},
  };
  for (const auto& vector : vectors) {
    EXPECT_EQ(EncryptString(vector.clear, kPasswordKey), vector.stored);
    EXPECT_EQ(DecryptString(vector.stored, kPasswordKey), vector.clear);
  }
}

TEST(PasswordScramblingTest, FollowsTheKey) {
  const std::vector<Vector> storedByKey = {
      {"k", "[GJc"}, {"", "rstx"}, {std::string("\0k", 2), "<sM["}, {"\u00E4", "Twey"}};
  for (const auto& [key, stored] : storedByKey) {
    EXPECT_EQ(EncryptString("abc", key), stored);
    EXPECT_EQ(DecryptString(stored, key), "abc");
  }
}

TEST(PasswordScramblingTest, GivesSomeTextForWhateverSomebodyTyped) {
  const std::vector<Vector> vectors = {
      {"", "x"},  // too short for any clear character
      {"0ef530487b", "Pass123"},
      {"36e97b943b", "hunter2"},
      {"7df4605b7a", "abcd 1!"},
      {"2da4f0", "12345"},
      {"2339e094", "secre1"},  // the character of the top bits below the first code
      {"1fb5cb", "\u00FF!\u00FE "},
  };
  for (const auto& [clearInHex, stored] : vectors)
    EXPECT_EQ(DecryptString(stored, kPasswordKey), AnsiToUtf8(test::FromHex(clearInHex))) << stored;
}

TEST(PasswordScramblingTest, RefusesTextsOutsideTheCodePage) {
  for (const std::string text : {"snow\u2603", "broken\xC3"}) {
    EXPECT_EQ(Failure(EncryptString, text), "500111 PellorinConfig, ConfigUtils, EncryptString");
    EXPECT_EQ(Failure(DecryptString, text), "500112 PellorinConfig, ConfigUtils, DecryptString");
  }
}

TEST(PasswordScramblingTest, KnowsTheNamesOfPasswordsExactly) {
  for (const auto* name : {"SqlPassword", "Password", "SchedulerPassword"})
    EXPECT_TRUE(IsPasswordName(name)) << name;
  for (const auto* name : {"password", "SQLPassword", "Username", "Password ", ""})
    EXPECT_FALSE(IsPasswordName(name)) << name;
}
