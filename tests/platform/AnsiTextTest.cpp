#include "platform/AnsiText.h"

#include <gtest/gtest.h>

#include <set>

namespace pellorin {
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
}

TEST(AnsiText, CodesStandForTheCharactersOfTheCodePage) {
  EXPECT_EQ(AnsiToUtf8("A\x80 \x83\x8A\x91\x94\x96\x99\x9F"), "A€ ƒŠ‘”–™Ÿ");
  EXPECT_EQ(AnsiToUtf8("\xA0\xB5\xDF\xE4\xFF"), "\u00A0µßäÿ");
  EXPECT_EQ(AnsiToUtf8("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
  EXPECT_EQ(AnsiToUtf8(std::string("a\0b", 3)), std::string("a\0b", 3));
  EXPECT_EQ(Utf8ToAnsi("Grüße, 5 €"),
            "Gr\xFC\xDF"
            "e, 5 \x80");
}

TEST(AnsiText, RefusesWhatTheCodePageCannotHold) {
  const char* const texts[] = {
      "\u0080",  // the code 80 is the euro sign
      "\u0099",
      "Ā",
      "日本",
      "😀",
      "a\u0308",  // outside the code page
      "\xFF",
      "a\x80",
      "\xC3",
      "\xE2\x82",
      "\xE2\x28\xA1",  // no UTF-8
      "\xC0\xAF",
      "\xC1\x81",
      "\xE0\x82\xA0",  // overlong
      "\xED\xA0\x80",
      "\xF4\x90\x80\x80",
      "\xF8\x88\x80\x80\x80",  // surrogate, beyond the last character
  };
  for (const char* text : texts) EXPECT_EQ(Utf8ToAnsi(text), std::nullopt) << text;
}

}  // namespace
}  // namespace pellorin
