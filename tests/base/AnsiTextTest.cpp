#include "base/AnsiText.h"

#include <gtest/gtest.h>

#include <set>

namespace pellorin::test {
namespace {

TEST(AnsiText, EveryCodeComesBackAndHasACharacterOfItsOwn) {
  std::set<std::string> characters;
  for (int code = 0; code < 256; ++code) {
    const std::string ansi(1, static_cast<char>(code));
    const std::string utf8 = AnsiToUtf8(ansi);
    EXPECT_EQ(Utf8ToAnsi(utf8), ansi) << code;
    characters.insert(utf8);
  }
  EXPECT_EQ(characters.size(), 256u);
  EXPECT_EQ(AnsiToUtf8("A\x80 \x83\x8A\x91\x94\x96\x99\x9F\xA0\xDF\xFF"), "A€ ƒŠ‘”–™Ÿ\u00A0ßÿ");
  EXPECT_EQ(AnsiToUtf8("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
}

TEST(AnsiText, RefusesWhatTheCodePageCannotHold) {
  // Outside the code page (the code 80 is the euro sign); no UTF-8; overlong, surrogate, too great.
  for (const char* text : {"\u0080", "Ā", "日本", "😀", "a\u0308", "\xFF", "a\x80", "\xC3", "\xE2\x82",
                           "\xE2\x28\xA1", "\xC0\xAF", "\xE0\x82\xA0", "\xED\xA0\x80", "\xF4\x90\x80\x80"})
    EXPECT_EQ(Utf8ToAnsi(text), std::nullopt) << text;
}

}  // namespace
}  // namespace pellorin::test
