#include "base/TextCase.h"

#include <gtest/gtest.h>

#include <tuple>

namespace pellorin::test {
namespace {

TEST(TextCase, ComparesCharacterByCharacter) {
  const std::tuple<const char*, const char*, bool> rows[] = {
      {"SQL:Main", "sql:mAIN", true},
      {"ab", "abc", false},
      {"[", "{", false},
      {"ÄÖÜŸŠ", "äöüÿš", true},
      {"ß", "ss", false},
      {"xΣЖ1", "Xσж1", true},
      {"I", "ı", false},
      {"A\xFF", "a\xFF", true},  // no UTF-8: as it is
      {"\xC4", "\xE4", false},
      {"a\u212A", "AK", true},  // the Kelvin sign folds to an ASCII letter
  };
  for (const auto& [left, right, equal] : rows) {
    EXPECT_EQ(EqualIgnoringCase(left, right), equal) << left << " " << right;
    EXPECT_EQ(FoldCase(left) == FoldCase(right), equal) << left << " " << right;
    if (equal) {
      EXPECT_EQ(HashIgnoringCase(left), HashIgnoringCase(right)) << left << " " << right;
    }
  }
}

}  // namespace
}  // namespace pellorin::test
