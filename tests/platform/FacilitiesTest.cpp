// Comparing and finding names, the registry, GUIDs.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "platform/Guid.h"
#include "platform/Registry.h"
#include "platform/TextCase.h"
#include "tests/support/FailingFiles.h"
#include "tests/support/TemporaryFolder.h"

namespace pellorin {
namespace {

namespace fs = std::filesystem;
using test::TemporaryFolder;

TEST(TextCase, ComparesCharacterByCharacter) {
  struct Case {
    const char* left;
    const char* right;
    bool equal;
  };
  const Case cases[] = {
      {"", "", true},
      {"SQL:Main", "sql:mAIN", true},
      {"ab", "abc", false},
      {"[", "{", false},
      {"@", "`", false},
      {"ÄÖÜŸŠ", "äöüÿš", true},
      {"ä", "a", false},
      {"ß", "ss", false},
      {"xΣЖ1", "Xσж1", true},
      {"I", "ı", false},
      {"i", "I", true},
      {"A\xFF", "a\xFF", true},
      {"\xC4", "\xE4", false},  // no UTF-8: as they are
      {"\xE2\x82", "\xE2\x82", true},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(EqualIgnoringCase(row.left, row.right), row.equal) << row.left << " " << row.right;
    EXPECT_EQ(FoldCase(row.left) == FoldCase(row.right), row.equal) << row.left << " " << row.right;
  }
  EXPECT_FALSE(EqualIgnoringCase(std::string_view("a\0b", 3), std::string_view("a\0c", 3)));
}

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
  EXPECT_EQ(find("absent"), "absent");
  EXPECT_EQ(FindIgnoringCase(SystemFiles(), folder / "absent", "Name"), "Name");
  fs::create_symlink("nowhere", folder / "DANGLING");
  fs::create_symlink("nowhere", folder / "dangling");
  EXPECT_EQ(find("DANGLING"), "DANGLING");

  test::FailingFiles files(SystemFiles());
  EXPECT_EQ(FindIgnoringCase(files, folder.Path(), "ONLY"), "ONLY");
  EXPECT_EQ(files.Count(), 1) << "an exact name needs no listing";
}

TEST(Paths, AreJoinedAndTakenApart) {
  EXPECT_EQ(JoinPath("/a/b", "c"), "/a/b/c");
  EXPECT_EQ(JoinPath("/a/b/", "c"), "/a/b/c");
  EXPECT_EQ(JoinPath("/", "c"), "/c");
  EXPECT_EQ(JoinPath("", "c"), "c");
  EXPECT_EQ(FolderOf("/a/b/c"), "/a/b");
  EXPECT_EQ(FolderOf("/c"), "/");
  EXPECT_EQ(FolderOf("c"), ".");
  EXPECT_EQ(NameOf("/a/c"), "c");
  EXPECT_EQ(NameOf("c"), "c");
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
  EXPECT_TRUE(same("Real", "Real///"));
  EXPECT_TRUE(same("Real", "rEAL/"));
  EXPECT_TRUE(same("link", "Real"));
  EXPECT_TRUE(same("LINK/inner", "deep"));
  EXPECT_TRUE(same("Real/Inner/..", "other/../link/."));
  EXPECT_TRUE(same("absent/Sub/", "ABSENT/sub"));
  EXPECT_TRUE(same("loop/", "loop"));
  EXPECT_FALSE(same("Real", "other"));
  EXPECT_FALSE(same("Real", "Real/Inner"));
  EXPECT_TRUE(SameFolder(SystemFiles(), ".", fs::current_path().string() + "/"));
}

TEST(Registry, WritesAndReadsValuesWithoutRegardToLetterCase) {
  const TemporaryFolder folder;
  Registry registry(SystemFiles(), folder / "new/root");
  const std::string bytes("MSSQLSERVER\0SALES\0\0", 19);
  EXPECT_EQ(registry.ReadValue("SOFTWARE/Server", "Instances"), std::nullopt);
  registry.WriteValue("SOFTWARE/Server", "Instances", bytes);
  EXPECT_EQ(registry.ReadValue("software/SERVER", "INSTANCES"), bytes);
  registry.WriteValue("Software/server/Sub", "instances", "x");
  registry.WriteValue("Software/server", "instances", "");
  EXPECT_EQ(folder.Read("new/root/SOFTWARE/Server/Instances"), "");
  EXPECT_EQ(folder.Read("new/root/SOFTWARE/Server/Sub/instances"), "x");
  EXPECT_EQ(registry.ReadValue("SOFTWARE/Server", "instances"), "");
  EXPECT_EQ(registry.ReadValue("SOFTWARE", "Server"), std::nullopt) << "a key is no value";
  EXPECT_EQ(registry.ReadValue("SOFTWARE/Server/Instances", "x"), std::nullopt) << "a value is no key";
  EXPECT_THROW(registry.WriteValue("SOFTWARE/Server/Instances", "x", ""), FileError);
}

TEST(Registry, AnUnreadableValueIsAFailureNotAnAbsentOne) {
  const TemporaryFolder folder;
  folder.Write("key/value", "x");
  test::FailingFiles files(SystemFiles());
  const Registry registry(files, folder.Path());
  files.FailAt(4);  // behind looking up key and value, and examining the file
  EXPECT_THROW(registry.ReadValue("key", "value"), FileError);
  ASSERT_EQ(::mkfifo((folder / "key/pipe").c_str(), 0600), 0);
  EXPECT_THROW(Registry(SystemFiles(), folder.Path()).ReadValue("key", "pipe"), FileError);
}

// Whether every character of the text is among the digits where the form has an x, and the form's own
// elsewhere.
bool HasForm(const std::string& text, const std::string& form) {
  const std::string digits = "0123456789ABCDEF";
  return std::equal(text.begin(), text.end(), form.begin(), form.end(), [&](char given, char wanted) {
    return wanted == 'x' ? digits.find(given) != std::string::npos : given == wanted;
  });
}

TEST(Guid, IsRandomOfVersionFourInRegistryForm) {
  std::set<std::string> all;
  std::set<char> variants;
  for (int count = 0; count < 200; ++count) {
    const std::string guid = GenerateGUID();
    EXPECT_TRUE(HasForm(guid, "{xxxxxxxx-xxxx-4xxx-xxxx-xxxxxxxxxxxx}")) << guid;
    variants.insert(guid.at(20));
    all.insert(guid);
  }
  EXPECT_EQ(variants, (std::set<char>{'8', '9', 'A', 'B'}));
  EXPECT_EQ(all.size(), 200u);
}

}  // namespace
}  // namespace pellorin
