// Comparing and finding names, names of hosts, the registry, GUIDs.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <tuple>

#include "platform/Guid.h"
#include "platform/HostName.h"
#include "platform/Registry.h"
#include "platform/TextCase.h"
#include "tests/support/FailingFiles.h"
#include "tests/support/TemporaryFolder.h"

namespace pellorin::test {
namespace {

namespace fs = std::filesystem;

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

TEST(AsciiHostName, ConvertsOtherLettersAndNothingElse) {
  const std::pair<std::string, std::string> rows[] = {
      {"MÜLLER.straße.Example.", "xn--mller-kva.xn--strae-oqa.example."},
      {"SQL_01", "SQL_01"},
      {"fe80::1%eth0", "fe80::1%eth0"},
      {"\xFF.example", "\xFF.example"},  // cannot be converted
      {std::string(70, 'x') + "ü", std::string(70, 'x') + "ü"}};
  for (const auto& [typed, ascii] : rows) EXPECT_EQ(AsciiHostName(typed), ascii);
}

TEST(Registry, WritesAndReadsValuesWithoutRegardToLetterCase) {
  const TemporaryFolder folder;
  Registry registry(SystemFiles(), folder / "new/root");
  const std::string bytes("MSSQLSERVER\0SALES\0\0", 19);
  EXPECT_EQ(registry.ReadValue("SOFTWARE/Server", "Instances"), std::nullopt);
  registry.WriteValue("SOFTWARE/Server", "Instances", bytes);
  EXPECT_EQ(registry.ReadValue("software/SERVER", "INSTANCES"), bytes);
  registry.WriteValue("Software/server", "instances", "");
  EXPECT_EQ(folder.Read("new/root/SOFTWARE/Server/Instances"), "");
  EXPECT_EQ(registry.ReadValue("SOFTWARE/Server", "instances"), "");
  EXPECT_EQ(registry.ReadValue("SOFTWARE", "Server"), std::nullopt) << "a key is no value";
  EXPECT_EQ(registry.ReadValue("SOFTWARE/Server/Instances", "x"), std::nullopt) << "a value is no key";
  EXPECT_THROW(registry.WriteValue("SOFTWARE/Server/Instances", "x", ""), FileError);
  FailingFiles files(SystemFiles());
  files.FailAt(5);  // behind looking up keys and value, and examining the file
  EXPECT_THROW(Registry(files, folder / "new/root").ReadValue("SOFTWARE/Server", "Instances"), FileError);
}

TEST(Guid, IsRandomOfVersionFourInRegistryForm) {
  const std::regex form("\\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\}");
  std::set<std::string> all;
  for (int count = 0; count < 200; ++count) {
    const std::string guid = GenerateGUID();
    EXPECT_TRUE(std::regex_match(guid, form)) << guid;
    all.insert(guid);
  }
  EXPECT_EQ(all.size(), 200u);
}

}  // namespace
}  // namespace pellorin::test
