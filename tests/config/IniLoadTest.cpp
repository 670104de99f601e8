#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "tests/config/ServiceFolder.h"

namespace pellorin::test {
namespace {

namespace fs = std::filesystem;
using std::string_literals::operator""s;

TEST(IniLoad, TellsTypesBySectionNamesAndSplitsEntriesAtTheFirstEqualsSign) {
  const ServiceFolder folder(
      "; kept by hand\r\n[sql:Main]\r\nConnectionString=Data Source=x;User=y\r\n  padded \t=  v \t\r\n"
      "Empty=\r\n[QUEUE:y]\r\n[Mail:\x80]\r\n# a=\xE4\r\n[QUEUE:z]\r\n[aDmIn:Pellorin]\r\nUsername=me\r\n");
  EXPECT_EQ(Shown(*folder.Loaded()),
            "1sql:Main{ConnectionString=Data Source=x;User=y;padded=v;Empty=;}\n"
            "1QUEUE:y{}\n"
            "0Mail:\u20AC{# a=\u00E4;}\n"
            "0QUEUE:z{}\n"
            "2aDmIn:Pellorin{Username=me;}\n");  // found, so none is added
  const ServiceFolder first("[QUEUE:y]\n[SQL:A]\n[:]\n[ADMIN:Pellorin]\n[QUEUE:z]");
  EXPECT_EQ(Shown(*first.Loaded()), "0QUEUE:y{}\n1SQL:A{}\n1:{}\n2ADMIN:Pellorin{}\n2QUEUE:z{}\n");
}

TEST(IniLoad, ReportsWhatItCannotRead) {
  const std::string load = "PellorinConfig.exe, Ini, Load";
  const std::string format = ". The extected format is SQL:name or MAIL:name";
  const std::string utf16 =
      "It is encoded in UTF-16. Please save it with a text editor as ANSI (code page 1252).";
  const std::string noLoad = "Could not load .INI file";
  const std::string onlyMark =
      "It holds nothing but the byte-order mark of UTF-8. Please delete the file: the program then makes a "
      "new one.";
  const struct {
    std::string bytes;
    int number;
    std::string source, description;
  } rows[] = {
      {"\r\n\t\r\n", 50100, load, noLoad},
      {"\xFF\xFE[\0M\0"s, 50100, load, noLoad + "\r\n" + utf16},
      {"\xFE\xFF\0[\0M"s, 50100, load, noLoad + "\r\n" + utf16},
      {"[\0M\0A\0:\0]\0"s, 50100, load, noLoad + "\r\n" + utf16},
      {"\xEF\xBB\xBF\r\n", 50100, load, noLoad + "\r\n" + onlyMark},
      {"[MAIL:a]\r\n[SQL:a:b]\r\n", 50101, load, "Could not read section name: SQL:a:b" + format},
      {"[MAIL:a]\r\nx=1\r\njunk\xE4 \r\n", 50110, "PellorinConfig.exe, Section, Load",
       "Could not load a parameter from string junk\u00E4. Parameters are expected to be in the form "
       "Name=Value. Section MAIL:a. Please check configuration settings for Pellorin."},
      {"[MAIL:a]\r\nTimeout=1\r\nTIMEOUT=2\r\n", 457, "PellorinConfig.exe, Collection",
       "Section MAIL:a holds an entry twice: \"TIMEOUT\" is already an element of this collection"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.bytes);
    const ServiceFolder folder(row.bytes);
    EXPECT_EQ(FailureOf([&] { folder.Loaded(); }),
              Failure(row.number, row.source, row.description, folder.IniPath()));
    EXPECT_EQ(folder.IniBytes(), row.bytes);
  }
}

TEST(IniLoad, BlankFilesHoldNothingAndTheirQueuesAreNotRead) {
  const std::string nuls(4096, '\0');
  for (const std::string& bytes : {""s, "\r\n  \n\r\n"s, nuls, " \0\r\n "s, "\f\n\xA0\n\x1A\r\n"s}) {
    const ServiceFolder folder(bytes);
    folder.WriteQueue("Night.xml", "<queue/>");
    const auto document = folder.Loaded();
    EXPECT_EQ(Shown(*document), "2ADMIN:Pellorin{}\n");
    document->Save();  // nothing has changed
    EXPECT_EQ(folder.IniBytes(), bytes);
  }
}

TEST(IniLoad, CreatesAMissingFileThatOthersCannotReadUnlessItHasOtherLetterCase) {
  const ServiceFolder folder;
  fs::remove(folder.IniPath());
  fs::remove_all(folder / "QUEUEDefinitions");  // not looked at
  EXPECT_EQ(Shown(*folder.Loaded()), "2ADMIN:Pellorin{}\n");
  EXPECT_EQ(folder.IniBytes(), "");
  EXPECT_EQ(fs::status(folder.IniPath()).permissions(), fs::perms(0640));

  const ServiceFolder other;
  fs::rename(other.IniPath(), other / "PELLORIN.INI");
  const auto document = other.Loaded();
  document->AdminSection().SetValue("x", "2");
  document->Save();
  EXPECT_EQ(other.Read("PELLORIN.INI"), "[ADMIN:Pellorin]\r\nx=2\r\n");
  EXPECT_FALSE(other.Has("Pellorin.ini"));

  other.Write("pellorin.ini", "");
  EXPECT_EQ(
      FailureOf([&] { other.Loaded(); }),
      Failure(50100, "PellorinConfig.exe, Ini, Load",
              "Could not load .INI file\r\nThe folder holds PELLORIN.INI and pellorin.ini, which differ in "
              "letter case only. Please keep one of them and call it Pellorin.ini.",
              other.Path()));
  EXPECT_FALSE(other.Has("Pellorin.ini"));
  fs::remove(other / "pellorin.ini");
  fs::create_directory(other / "pellorin.ini");
  EXPECT_NO_THROW(other.Loaded()) << "a folder is not such a file";
}

TEST(IniLoad, ASecondSectionOfANameInAnyLetterCaseCannotBeWritten) {
  const Store store("[MAIL:a]\r\nx=1\r\n[mail:A]\r\nx=2\r\n");
  EXPECT_EQ(Shown(*store), "0MAIL:a{x=1;}\n0mail:A{x=1;}\n2ADMIN:Pellorin{}\n");
  EXPECT_TRUE(store["MAIL:a"].CanBeWritten());
  EXPECT_FALSE(store["mail:A"].CanBeWritten());
}

TEST(IniLoad, NamesTheFolderThatCannotBeListed) {
  const ServiceFolder folder("[MAIL:a]");
  fs::remove_all(folder / "QUEUEDefinitions");
  EXPECT_EQ(FailureOf([&] { folder.Loaded(); }),
            Failure(ENOENT, "PellorinConfig.exe, FileSystem",
                    "Cannot list the folder: No such file or directory", folder / "QUEUEDefinitions"));
}

TEST(Ini, CountsAndDeletesSections) {
  const Store store("[ADMIN:Pellorin]\n[MAIL:a]\n[MAIL:b]\n[SQL:c]\n[MAIL:x|y]\n");
  EXPECT_EQ(store->Count(), 4);
  store->Delete("MAIL:a");
  EXPECT_EQ(store->Count(), 4);
  EXPECT_EQ(store->NumOfSections(SectionType::Mail), 2);
  EXPECT_EQ(store->GetSection("MAIL:a"), nullptr);
  EXPECT_EQ(store->GetSection("mail:b"), nullptr);

  // A section that is only in memory is gone at once; the name of a deleted one can be used again.
  Section& added = store->Add("MAIL:a", SectionType::Mail);
  EXPECT_EQ(store->GetSection("MAIL:a"), &added);
  store->Delete("MAIL:a");
  EXPECT_EQ(store->Sections().Count(), 5u);

  EXPECT_EQ(
      FailureOf([&] { store->Delete("MAIL:a"); }),
      Failure(5, "PellorinConfig.exe, Collection", "There is no element \"MAIL:a\" in this collection", ""));
  EXPECT_EQ(FailureOf([&] { store->Delete("MAIL:x|y"); }),
            Failure(50111, "PellorinConfig.exe, Ini, Delete", "Section MAIL:x|y can only be deleted by hand",
                    store.IniPath()));
  store["MAIL:x|y"].SetValue("k", "v");
  store->Save();  // it can be changed all the same
  EXPECT_EQ(store.IniBytes(), "[ADMIN:Pellorin]\n[MAIL:b]\n[SQL:c]\n[MAIL:x|y]\nk=v\n");
}

TEST(Ini, KnowsWhichNamesAreTaken) {
  const Store store("[MAIL:a]\n[MAIL:gone]\n[SQL:b]\n[QUEUE:c]\n");
  store->Delete("MAIL:gone");
  for (const char* name : {"Night", "MAIL:d", "SQL:e"}) store->Add(name, SectionType::Queue);
  const std::tuple<SectionType, const char*, bool> rows[] = {
      {SectionType::Mail, "A", true},      {SectionType::Mail, "gone", false},
      {SectionType::Mail, "b", false},     {SectionType::Sql, "B", true},
      {SectionType::Sql, "QUEUE:C", true}, {SectionType::Sql, "a", false},
      {SectionType::Mail, "d", true},      {SectionType::Sql, "e", false},
      {SectionType::Queue, "nIGHT", true}, {SectionType::Queue, "a", false},
  };
  for (const auto& [type, name, isTaken] : rows) EXPECT_EQ(store->HoldsName(type, name), isTaken) << name;
  EXPECT_EQ(store->SectionsOf(SectionType::Mail), std::vector<Section*>{&store["MAIL:a"]});
}

}  // namespace
}  // namespace pellorin::test
