#include "config/PasswordScrambling.h"

#include <gtest/gtest.h>

#include <string>

#include "base/AnsiText.h"
#include "tests/config/ServiceFolder.h"
#include "tests/support/TestData.h"

using namespace pellorin;

TEST(PasswordScramblingTest, AgreesWithTheServiceOnEveryVector) {
  const auto rows = test::ReadTable(TEST_DATA "/scramble_vectors.tsv", 5);
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

TEST(PasswordScramblingTest, FollowsTheKey) {
  EXPECT_EQ(EncryptString("abc", ""), "rstx");
  EXPECT_EQ(EncryptString("abc", "\u00E4"), "Twey");
  EXPECT_EQ(DecryptString("Twey", "\u00E4"), "abc");
}

TEST(PasswordScramblingTest, RefusesTextsOutsideTheCodePage) {
  using test::FailureOf;
  for (const std::string text : {"snow\u2603", "broken\xC3"}) {
    const std::string encrypting = FailureOf([&] { EncryptString(text, kPasswordKey); });
    EXPECT_TRUE(encrypting.starts_with("500111 | PellorinConfig, ConfigUtils, EncryptString | "))
        << encrypting;
    const std::string decrypting = FailureOf([&] { DecryptString(text, kPasswordKey); });
    EXPECT_TRUE(decrypting.starts_with("500112 | PellorinConfig, ConfigUtils, DecryptString | "))
        << decrypting;
  }
}
