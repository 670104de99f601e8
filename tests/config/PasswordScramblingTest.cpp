#include "config/PasswordScrambling.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "base/AnsiText.h"
#include "tests/config/ServiceFolder.h"
#include "tests/support/TestData.h"

using namespace pellorin;

TEST(PasswordScramblingTest, AgreesWithTheServiceOnEveryVector) {
  const auto rows = test::ReadTable(TEST_DATA "/scramble_vectors.tsv", 5);
  ASSERT_EQ(rows.size(), 31U);
  for (const auto& row : rows) {
    SCOPED_TRACE(row[0] + ": " + row[2]);
    const std::string clear = AnsiToUtf8(test::FromHex(row[3]));
    const std::string stored = AnsiToUtf8(test::FromHex(row[4]));
    EXPECT_EQ(DecryptString(stored, kPasswordKey), clear);
    if (row[1] == "both") {
      EXPECT_EQ(EncryptString(clear, kPasswordKey), stored);
    }
  }
}

TEST(PasswordScramblingTest, StoresOddLengthsAndFollowsTheKey) {
  const std::vector<std::array<std::string, 3>> rows = {
      {std::string(kPasswordKey), "a", "u["},
      {std::string(kPasswordKey), "secret!", "cqf\\Gdlxxk"},
      {std::string(kPasswordKey), "\u00FF\u00FF\u00FF\u00FF\u00FF\u00FF\u00FF", "_grF<nuR^;"},
      {"", "abc", "rstx"},
      {std::string("\0k", 2), "abc", "<sM["},
      {"\u00E4", "abc", "Twey"},
  };
  for (const auto& [key, clear, stored] : rows) {
    EXPECT_EQ(EncryptString(clear, key), stored);
    EXPECT_EQ(DecryptString(stored, key), clear);
  }
}

TEST(PasswordScramblingTest, RefusesTextsOutsideTheCodePage) {
  using test::FailureOf;
  for (const std::string text : {"snow\u2603", "broken\xC3"}) {
    EXPECT_TRUE(FailureOf([&] {
                  EncryptString(text, kPasswordKey);
                }).starts_with("500111 | PellorinConfig, ConfigUtils, EncryptString | "));
    EXPECT_TRUE(FailureOf([&] {
                  DecryptString(text, kPasswordKey);
                }).starts_with("500112 | PellorinConfig, ConfigUtils, DecryptString | "));
  }
}
