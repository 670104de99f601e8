#include "config/ini/ProfileFile.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/Text.h"
#include "tests/support/TestData.h"

namespace pellorin {
namespace {

using test::Unescape;

std::string Joined(const ProfileText& text) {
  std::string joined;
  for (const std::string_view piece : text.Pieces()) (joined += joined.empty() ? "" : " | ") += piece;
  return joined;
}

// The section's lines as the buffer of that size holds them.
ProfileText LinesOf(const ProfileFile& file, std::string_view section, std::size_t bufferSize) {
  ProfileText lines;
  file.ForEachLine(section, bufferSize, [&lines](std::string_view line) { (lines.buffer += line) += '\0'; });
  lines.buffer.resize(std::min(lines.buffer.size(), bufferSize < 2 ? 0 : bufferSize - 2));
  return lines;
}

TEST(ProfileFile, BehavesAsTheSystemsProfileFunctions) {
  for (const auto& row : test::ReadTable(TEST_DATA "/ini/profile_cases.tsv", 8)) {
    SCOPED_TRACE(row[0] + ": " + row[2]);
    const std::string op = row[1], section = Unescape(row[5]), expected = Unescape(row[7]);
    const ProfileFile file(Unescape(row[4]));
    if (op == "write") {
      EXPECT_EQ(file.WithSection(section, SplitAt(" | ", Unescape(row[6]))), expected);
    } else if (op == "delete") {
      EXPECT_EQ(file.WithoutSection(section), expected);
    } else {
      ASSERT_TRUE(op == "names" || op == "section") << op;
      const std::size_t buffer = std::stoul(row[3]);
      const ProfileText text = op == "names" ? file.SectionNames(buffer) : LinesOf(file, section, buffer);
      EXPECT_EQ(Joined(text), expected);
      EXPECT_EQ(text.buffer.size(), std::stoul(row[6]));
    }
  }
}

TEST(ProfileFile, TellsWhetherTheBufferCutSomething) {
  const ProfileFile file("[A]\nx=12345\ny=67890\n[B]\n");
  for (const auto& [buffer, isCutOff] : {std::pair(17, false), {16, true}, {9, true}, {0, true}}) {
    EXPECT_EQ(file.ForEachLine("A", buffer, [](std::string_view) {}), isCutOff) << buffer << " bytes";
    EXPECT_FALSE(file.ForEachLine("B", buffer, [](std::string_view) {})) << buffer << " bytes";
  }
}

TEST(ProfileFile, ReadsHeadersAndLinesHoweverTheyAreSpelled) {
  const ProfileFile file(
      "\xEF\xBB\xBF[ First ]\r\n \t x \t=\t 1 = 2 \t\r\n\t;c=1\r\n#d=1\r\n = e\r\n  junk \rbefore \t=f\r"
      "\t [Second]] rest=1\ra=1\r[Third\nb=1\n\n[]\nc=1\n[fIRST]\nlost=1");
  EXPECT_EQ(Joined(file.SectionNames(1000)), "First | Second | Third | fIRST");
  EXPECT_EQ(Joined(LinesOf(file, "first", 1000)), "x=1 = 2 | #d=1 | =e | junk | before=f");
  EXPECT_EQ(Joined(LinesOf(file, "Second", 1000)), "a=1");
  EXPECT_EQ(Joined(LinesOf(file, "Third", 1000)), "b=1");
  EXPECT_EQ(Joined(LinesOf(file, "", 1000)), "c=1");
  EXPECT_TRUE(file.HasSection("THIRD"));
  EXPECT_FALSE(file.HasSection("Fourth"));
}

TEST(ProfileFile, ComparesNamesInTheCodePage) {
  const ProfileFile file("[MAIL:\xC4\x8A]\nx=1\n[MAIL:\xE4\x9A]\nx=2\n[MAIL:\x81]\nx=3\n");
  EXPECT_EQ(Joined(LinesOf(file, "mail:\xE4\x8A", 100)), "x=1");
  EXPECT_FALSE(file.HasSection("MAIL:\x8D"));
  EXPECT_FALSE(file.HasSection("MAIL:a\x8A"));
}

TEST(ProfileFile, NulsEndTexts) {
  using namespace std::string_literals;
  const ProfileFile file("[A]\r\nx=1\0y = 2\r\n\0\0\r\nz=3\0\r\n"s);
  const ProfileText text = LinesOf(file, "A", 1000);
  EXPECT_EQ(Joined(text), "x=1 | y = 2 | z=3");
  EXPECT_EQ(text.buffer.size(), 18u);
  EXPECT_EQ(file.WithSection("A", {"x=9"}), "[A]\r\nx=9\r\n");
  EXPECT_TRUE(ProfileFile(std::string(5000, '\0')).SectionNames(10000).buffer.empty());
}

}  // namespace
}  // namespace pellorin
