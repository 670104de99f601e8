#include "files/FileLookup.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/FailingFiles.h"
#include "tests/support/TemporaryFolder.h"

namespace pellorin::test {
namespace {

namespace fs = std::filesystem;

TEST(FindIgnoringCase, PrefersTheExactSpellingThenTheOnlyOther) {
  const TemporaryFolder folder;
  for (const char* name : {"Night.XML", "night.xml", "Ärger.xml", "ONLY"}) folder.Write(name, "");
  const auto find = [&](const std::string& name) {
    return FindIgnoringCase(SystemFiles(), folder.Path(), name);
  };
  EXPECT_EQ(find("night.xml"), "night.xml");
  EXPECT_EQ(find("Night.XML"), "Night.XML");
  EXPECT_EQ(find("NIGHT.XML"), "NIGHT.XML");  // two differ in case only
  EXPECT_EQ(find("äRGER.XML"), "Ärger.xml");
  EXPECT_EQ(find("only"), "ONLY");
  EXPECT_EQ(FindIgnoringCase(SystemFiles(), folder / "absent", "Name"), "Name");
  FailingFiles files(SystemFiles());
  EXPECT_EQ(FindIgnoringCase(files, folder.Path(), "ONLY"), "ONLY");
  EXPECT_EQ(files.Count(), 1) << "an exact name needs no listing";
}

TEST(SameFolder, IgnoresSpellingAndLinks) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "Real/Inner");
  fs::create_directory(folder / "other");
  fs::create_symlink("Real", folder / "link");
  fs::create_symlink(folder / "link/Inner", folder / "deep");
  fs::create_symlink("loop", folder / "loop");
  const auto same = [&](const std::string& left, const std::string& right) {
    return SameFolder(SystemFiles(), folder / left, folder / right);
  };
  EXPECT_TRUE(same("Real", "rEAL//"));
  EXPECT_TRUE(same("LINK/inner", "deep"));
  EXPECT_TRUE(same("Real/Inner/..", "other/../link/."));
  EXPECT_TRUE(same("absent/Sub/", "ABSENT/sub"));
  EXPECT_TRUE(same("loop/", "loop"));
  EXPECT_FALSE(same("Real", "other"));
  EXPECT_FALSE(same("Real", "Real/Inner"));
}

}  // namespace
}  // namespace pellorin::test
