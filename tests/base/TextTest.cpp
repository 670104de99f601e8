#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "base/AnsiText.h"
#include "base/TextCase.h"

namespace pellorin::test {
namespace {

TEST(AnsiText, EveryCodeComesBackAndHasACharacterOfItsOwn) {
  std::set<std::string> characters;
  for (int code = 0; code < 256; ++code) {
    const std::string ansi(1, static_cast<char>(code));
    const std::string utf8 = AnsiToUtf8(ansi);
    EXPECT_EQ(Utf8ToAnsi(utf8), ansi) << "code " << code;
    characters.insert(utf8);
  }
  EXPECT_EQ(characters.size(), 256u);
  EXPECT_EQ(AnsiToUtf8("A\x80\x81 \x83\x8A\x91\x94\x96\x99\x9F\xA0\xDF\xFF"), "A€\u0081 ƒŠ‘”–™Ÿ\u00A0ßÿ");
}

TEST(AnsiText, RefusesWhatTheCodePageCannotHold) {
  // Outside the code page (the code 80 is the euro sign), cut off, overlong, a surrogate, too great.
  for (const char* text : {"\u0080", "日本", "a\u0308", "a\x80", "\xC3", "\xE2\x28\xA1", "\xC0\xAF",
                           "\xE0\x82\xA0", "\xED\xA0\x80", "\xF4\x90\x80\x80"})
    EXPECT_EQ(Utf8ToAnsi(text), std::nullopt) << text;
}

TEST(TextCase, ComparesCharacterByCharacter) {
  const std::tuple<const char*, const char*, bool> rows[] = {
      {"SQL:Main", "sql:mAIN", true},
      {"ab", "abc", false},
      {"[", "{", false},
      {"ÄÖÜŸŠ", "äöüÿš", true},
      {"ß", "ss", false},
      {"xΣЖ1", "Xσж1", true},
      {"I", "ı", false},
      {"A\xFF", "a\xFF", true},  // not UTF-8: as it is
      {"\xC4", "\xE4", false},
      {"a\u212A", "AK", true},  // the Kelvin sign folds to an ASCII letter
  };
  for (const auto& [left, right, equal] : rows) {
    SCOPED_TRACE(left + std::string(" compared with ") + right);
    EXPECT_EQ(EqualIgnoringCase(left, right), equal);
    EXPECT_EQ(FoldCase(left) == FoldCase(right), equal);
    EXPECT_TRUE(!equal || HashIgnoringCase(left) == HashIgnoringCase(right));
  }
}

}  // namespace
}  // namespace pellorin::test
