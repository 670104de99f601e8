#include "platform/ProfileFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/AtomicFile.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestData.h"

namespace pellorin {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;
using test::TemporaryFolder;
using test::Unescape;

std::string Joined(const ProfileText& text) {
  std::string joined;
  for (const std::string_view piece : text.Pieces()) (joined += joined.empty() ? "" : " | ") += piece;
  return joined;
}

Lines SplitBehindNuls(std::string text) {
  Lines lines;
  for (std::size_t end = text.find('\0'); end != std::string::npos; end = text.find('\0')) {
    lines.push_back(text.substr(0, end));
    text.erase(0, end + 1);
  }
  return lines;
}

// One row of the table, run on a real file as the store does it.
class ProfileCase {
 public:
  explicit ProfileCase(const std::vector<std::string>& row)
      : op_(row[1]), buffer_(row[4].empty() ? 0 : std::stoul(row[4])), section_(Unescape(row[6])) {
    lines_ = SplitBehindNuls(Unescape(row[7]));
    returned_ = std::stoul(row[8]);
    const bool tooLong = row[5].starts_with("(long");
    before_ = tooLong ? "[SQL:A]\r\nx=" + std::string(12000, 'v') + "\r\ny=2\r\n" : Unescape(row[5]);
    expected_ = tooLong ? "x=" + std::string(9996, 'v') : Unescape(row[9]);
    Prepare(row[3]);
  }

  void Run() const {
    if (op_ == "names" || op_ == "section") {
      CheckReading();
    } else {
      ASSERT_TRUE(op_ == "write" || op_ == "delete") << op_;
      CheckWriting();
    }
  }

 private:
  void Prepare(const std::string& state) {
    if (state == "nofolder") {
      name_ = "absent/a.ini";
    } else if (state != "missing") {
      folder_.Write(name_, before_);
    }
    if (state == "readonly") fs::permissions(folder_ / name_, fs::perms::owner_read);
  }

  ProfileFile Load() const {
    return ProfileFile(folder_.Has(name_) ? ReadFile(SystemFiles(), folder_ / name_) : "");
  }

  void CheckReading() const {
    const ProfileFile file = Load();
    const ProfileText text =
        op_ == "names" ? file.SectionNames(buffer_) : file.SectionLines(section_, buffer_);
    EXPECT_EQ(text.buffer.size(), returned_);
    EXPECT_EQ(Joined(text), expected_);
  }

  void CheckWriting() const {
    const ProfileFile file = Load();
    const std::string after =
        op_ == "write" ? file.WithSection(section_, lines_) : file.WithoutSection(section_);
    std::size_t succeeded = 1;
    try {
      WriteFileAtomically(SystemFiles(), folder_ / name_, after, NewFileAccess::OwnerAndFolderGroup);
    } catch (const FileError&) {
      succeeded = 0;
    }
    EXPECT_EQ(succeeded, returned_);
    EXPECT_EQ(folder_.Has(name_) ? folder_.Read(name_) : "<no file>", expected_);
  }

  TemporaryFolder folder_;
  std::string name_ = "a.ini";
  std::string op_;
  std::size_t buffer_;
  std::string section_;
  Lines lines_;
  std::size_t returned_;
  std::string before_;
  std::string expected_;
};

TEST(ProfileFile, BehavesAsTheSystemsProfileFunctions) {
  for (const auto& row : test::ReadTable(TEST_DATA "/profile_cases.tsv")) {
    SCOPED_TRACE(row[0] + ": " + row[2]);
    ProfileCase(row).Run();
  }
}

TEST(ProfileFile, TellsWhetherTheBufferCutSomething) {
  const ProfileFile file("[A]\nx=12345\ny=67890\n[B]\n");
  struct Case {
    std::size_t buffer;
    const char* pieces;
    bool cutOff;
  };
  const Case cases[] = {{18, "x=12345 | y=67890", false},
                        {17, "x=12345 | y=67890", false},
                        {16, "x=12345 | y=6789", true},
                        {10, "x=12345", true},
                        {9, "x=12345", true},
                        {2, "", true},
                        {0, "", true}};
  for (const Case& row : cases) {
    const ProfileText text = file.SectionLines("A", row.buffer);
    EXPECT_EQ(Joined(text), row.pieces) << row.buffer;
    EXPECT_EQ(text.cutOff, row.cutOff) << row.buffer;
    EXPECT_FALSE(file.SectionLines("B", row.buffer).cutOff) << row.buffer;
  }
}

TEST(ProfileFile, ReadsHeadersAndLinesHoweverTheyAreSpelled) {
  const ProfileFile file(
      "\xEF\xBB\xBF[ First ]\r\n \t x \t=\t 1 = 2 \t\r\n\t;c=1\r\n#d=1\r\n = e\r\n  junk \r"
      "\t [Second]] rest=1\ra=1\r[Third\nb=1\n\n[]\nc=1\n[fIRST]\nlost=1");
  EXPECT_EQ(Joined(file.SectionNames(1000)), "First | Second | Third | fIRST");
  EXPECT_EQ(Joined(file.SectionLines("first", 1000)), "x=1 = 2 | #d=1 | =e | junk");
  EXPECT_EQ(Joined(file.SectionLines("Second", 1000)), "a=1");
  EXPECT_EQ(Joined(file.SectionLines("Third", 1000)), "b=1");
  EXPECT_EQ(Joined(file.SectionLines("", 1000)), "c=1");
  EXPECT_TRUE(file.HasSection("THIRD"));
  EXPECT_FALSE(file.HasSection("Fourth"));
}

TEST(ProfileFile, ComparesNamesInTheCodePage) {
  const ProfileFile file("[MAIL:\xC4\x8A]\nx=1\n[MAIL:\xE4\x9A]\nx=2\n[MAIL:\x81]\nx=3\n");
  EXPECT_EQ(Joined(file.SectionLines("mail:\xE4\x8A", 100)), "x=1");
  EXPECT_EQ(Joined(file.SectionLines("MAIL:\x81", 100)), "x=3");
  EXPECT_FALSE(file.HasSection("MAIL:\x8D"));
  EXPECT_FALSE(file.HasSection("MAIL:a\x8A"));
}

TEST(ProfileFile, NulsEndTexts) {
  using namespace std::string_literals;
  const ProfileFile file("[A]\r\nx=1\0y = 2\r\n\0\0\r\nz=3\0\r\n"s);
  const ProfileText text = file.SectionLines("A", 1000);
  EXPECT_EQ(Joined(text), "x=1 | y = 2 | z=3");
  EXPECT_EQ(text.buffer.size(), 18u);
  EXPECT_EQ(file.WithSection("A", {"x=9"}), "[A]\r\nx=9\r\n");
  EXPECT_TRUE(ProfileFile(std::string(5000, '\0')).SectionNames(10000).buffer.empty());
}

TEST(ProfileFile, SurvivesBeingCopiedAndMoved) {
  ProfileFile first("[A]\nx=1");
  const ProfileFile copy = first;
  const ProfileFile moved = std::move(first);
  EXPECT_EQ(Joined(copy.SectionLines("a", 100)), "x=1");
  EXPECT_EQ(moved.WithSection("a", {"x=2"}), "[A]\nx=2");
}

TEST(ProfileFile, ReplacesOnlyWhatChanges) {
  struct Case {
    const char* before;
    Lines lines;
    const char* after;
  };
  const std::string file =
      "; first\n  [a] note\r\n; c1\r\n\r\n x =  1 \r\n;c2\ny=2\r ;c3\r\n\t\r\nz=3\r\n;c4\r\n[B]\n q = 1\n";
  const Case cases[] = {
      // Nothing changes; one line; one less; none; more.
      {file.c_str(), {"x=1", "y=2", "z=3"}, file.c_str()},
      {file.c_str(),
       {"x=1", "y=5", "z=3"},
       "; first\n  [a] note\r\n; c1\r\n\r\n x =  1 \r\n;c2\ny=5\r ;c3\r\n\t\r\nz=3\r\n;c4\r\n[B]\n q = 1\n"},
      {file.c_str(),
       {"x=0", "z=3"},
       "; first\n  [a] note\r\n; c1\r\n\r\nx=0\r\n;c2\nz=3\r ;c3\r\n\t\r\n;c4\r\n[B]\n q = 1\n"},
      {file.c_str(), {}, "; first\n  [a] note\r\n; c1\r\n\r\n;c2\n ;c3\r\n\t\r\n;c4\r\n[B]\n q = 1\n"},
      {file.c_str(),
       {"x=1", "y=2", "z=3", "n=4", "m=5"},
       "; first\n  [a] note\r\n; c1\r\n\r\n x =  1 \r\n;c2\ny=2\r ;c3\r\n\t\r\nz=3\r\nn=4\r\nm=5\r\n;c4\r\n"
       "[B]\n q = 1\n"},
      // Line ends of the neighbours; a missing one.
      {"[A]\n[B]\n", {"x=1", "y=2"}, "[A]\nx=1\ny=2\n[B]\n"},
      {"[A]\r;c\r[B]\r", {"x=1"}, "[A]\rx=1\r;c\r[B]\r"},
      {"[A]\nx=1", {"x=1"}, "[A]\nx=1"},
      {"[A]\nx=1", {"x=2"}, "[A]\nx=2"},
      {"[A]\nx=1", {"x=2", "y=3"}, "[A]\nx=2\r\ny=3\r\n"},
      {"[A]\nx=1\n;c", {"x=2", "y=3"}, "[A]\nx=2\ny=3\n;c"},
      {"[A]", {"x=1"}, "[A]\r\nx=1\r\n"},
      {"[A]\nx=1\ny=2", {"x=1"}, "[A]\nx=1\n"},
      // A new section.
      {"[B]\nx=1\n", {"x=2"}, "[B]\nx=1\n[A]\r\nx=2\r\n"},
      {"[B]\rx=1\r", {}, "[B]\rx=1\r[A]\r\n"},
      {"[B]\r\n ;c", {"x=2"}, "[B]\r\n ;c\r\n[A]\r\nx=2\r\n"},
      {"\xEF\xBB\xBF", {"x=2"}, "\xEF\xBB\xBF[A]\r\nx=2\r\n"},
      {"\xEF\xBB\xBF[A]\nx=1\n", {"x=2"}, "\xEF\xBB\xBF[A]\nx=2\n"},
      // Of two sections of one name the first; foreign bytes outside stay.
      {"[A]\nx=1\n[a]\nx=2\n\x81\xFF=\x8D\n", {"x=3"}, "[A]\nx=3\n[a]\nx=2\n\x81\xFF=\x8D\n"},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(ProfileFile(row.before).WithSection("A", row.lines), row.after) << row.before;
  }
}

TEST(ProfileFile, DeletingASectionKeepsItsComments) {
  const char* const cases[][2] = {
      {"p=1\r\n[A]\r\n;c\r\n\r\nx=1\r\n ;d\n[B]\ny=2", "p=1\r\n;c\r\n\r\n ;d\n[B]\ny=2"},
      {"\xEF\xBB\xBF[A]\nx=1\n[B]\n", "\xEF\xBB\xBF[B]\n"},
      {"[a]\nx=1\n[A]\nx=2\n", "[A]\nx=2\n"},
      {"[B]\ny=1\n[A]\nx=1\n; last", "[B]\ny=1\n; last"},
      {"[B]\ny=1", "[B]\ny=1"},
  };
  for (const auto& [before, after] : cases) EXPECT_EQ(ProfileFile(before).WithoutSection("A"), after);
}

}  // namespace
}  // namespace pellorin
