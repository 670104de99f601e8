#include "config/Ini.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "config/PasswordScrambling.h"
#include "tests/config/ServiceFolder.h"
#include "tests/support/FailingFiles.h"

namespace pellorin {
namespace {

namespace fs = std::filesystem;
using test::CannotSave;
using test::Failure;
using test::FailureOf;
using test::ServiceFolder;
using test::Shown;
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
  const ServiceFolder first("[QUEUE:y]\n[SQL:A]\n[:]");
  EXPECT_EQ(Shown(*first.Loaded()), "0QUEUE:y{}\n1SQL:A{}\n1:{}\n2ADMIN:Pellorin{}\n");
}

TEST(IniLoad, ReportsWhatItCannotRead) {
  struct Row {
    std::string bytes;
    int number;
    const char* source;
    std::string description;
  };
  const char* const ini = "PellorinConfig.exe, Ini, Load";
  const char* const section = "PellorinConfig.exe, Section, Load";
  const std::string noNames = "Could not load .INI file";
  const std::string badName = "Could not read section name: ";
  const std::string format = ". The extected format is SQL:name or MAIL:name";
  const std::string badLine = "Could not load a parameter from string ";
  const std::string check = ". Please check configuration settings for Pellorin.";
  const std::string form = ". Parameters are expected to be in the form Name=Value. Section ";
  const Row rows[] = {
      {"\r\n\t\r\n", 50100, ini, noNames},
      {"; only\r\n# comments\r\n", 50100, ini, noNames},
      {"loose=1\r\n", 50100, ini, noNames},
      {"[MAIL:a]\r\n[SQL:a:b]\r\n", 50101, ini, badName + "SQL:a:b" + format},
      {"[Serv\xE4r]", 50101, ini, badName + "Serv\u00E4r" + format},
      {"[MAIL:a]\r\nx=1\r\n[MAI", 50101, ini, badName + "MAI" + format},  // cut in the middle
      {"[MAIL:a]\r\nx=1\r\njunk\xE4 \r\n", 50110, section, badLine + "junk\u00E4" + form + "MAIL:a" + check},
      {"[MAIL:a]\r\nx=1\r\n[SQL:b]\r\nSer", 50110, section, badLine + "Ser" + form + "SQL:b" + check},
      {"[MAIL:a]\r\nTimeout=1\r\nTIMEOUT=2\r\n", 457, "PellorinConfig.exe, Collection",
       "Section MAIL:a holds an entry twice: \"TIMEOUT\" is already an element of this collection"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.bytes);
    const ServiceFolder folder(row.bytes);
    EXPECT_EQ(FailureOf([&] { folder.Loaded(); }),
              Failure(row.number, row.source, row.description, folder.IniPath()));
    EXPECT_EQ(folder.IniBytes(), row.bytes);
  }
}

TEST(IniLoad, BlankFilesHoldNothingAndTheirQueuesAreNotRead) {
  const std::string nuls(4096, '\0');
  for (const std::string& bytes : {""s, "\r\n  \n\r\n"s, nuls, " \0\r\n "s}) {
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
}

TEST(IniLoad, NamesTheFileThatCannotBeUsed) {
  const ServiceFolder folder;
  const auto failure = [&] { return FailureOf([&] { folder.Loaded(); }); };
  const auto fileError = [&](int number, const std::string& description, const std::string& path) {
    return Failure(number, "PellorinConfig.exe, FileSystem", description, path);
  };
  fs::resize_file(folder.IniPath(), kLargestFile + 1);
  EXPECT_EQ(failure(), fileError(EFBIG, "Cannot read the file: it is larger than 16 MB", folder.IniPath()));
  if (::geteuid() != 0) {
    fs::resize_file(folder.IniPath(), 1);
    fs::permissions(folder.IniPath(), fs::perms::none);
    EXPECT_EQ(failure(), fileError(EACCES, "Cannot read the file: Permission denied", folder.IniPath()));
  }
  fs::remove(folder.IniPath());
  fs::create_directory(folder.IniPath());
  EXPECT_EQ(failure(), fileError(EISDIR, "Cannot read the file: it is a folder", folder.IniPath()));
  fs::remove(folder.IniPath());
  folder.Write("Pellorin.ini", "[MAIL:a]");
  fs::remove_all(folder / "QUEUEDefinitions");
  EXPECT_EQ(failure(), fileError(ENOENT, "Cannot list the folder: No such file or directory",
                                 folder / "QUEUEDefinitions"));
}

TEST(Ini, CountsAndDeletesSections) {
  const ServiceFolder folder("[ADMIN:Pellorin]\n[MAIL:a]\n[MAIL:b]\n[SQL:c]\n[MAIL:x|y]\n");
  const auto document = folder.Loaded();
  EXPECT_EQ(document->Count(), 4);
  document->Delete("MAIL:a");
  EXPECT_EQ(document->Count(), 4);
  EXPECT_EQ(document->NumOfSections(SectionType::Mail), 2);
  EXPECT_EQ(document->GetSection("MAIL:a"), nullptr);
  EXPECT_EQ(document->GetSection("mail:b"), nullptr);

  // A section that is only in memory is gone at once; the name of a deleted one can be used again.
  Section& added = document->Add("MAIL:a", SectionType::Mail);
  EXPECT_EQ(document->GetSection("MAIL:a"), &added);
  document->Delete("MAIL:a");
  EXPECT_EQ(document->Sections().Count(), 5u);

  EXPECT_EQ(
      FailureOf([&] { document->Delete("MAIL:a"); }),
      Failure(5, "PellorinConfig.exe, Collection", "There is no element \"MAIL:a\" in this collection", ""));
  EXPECT_EQ(FailureOf([&] { document->Delete("MAIL:x|y"); }),
            Failure(50111, "PellorinConfig.exe, Ini, Delete", "Section MAIL:x|y can only be deleted by hand",
                    folder.IniPath()));
  document->GetSection("MAIL:x|y")->SetValue("k", "v");
  document->Save();  // it can be changed all the same
  EXPECT_EQ(folder.IniBytes(), "[ADMIN:Pellorin]\n[MAIL:b]\n[SQL:c]\n[MAIL:x|y]\nk=v\n");
}

TEST(IniSave, WritesOnlyChangedSectionsAndKeepsEveryOtherByte) {
  const ServiceFolder folder(
      "; of the mail team\r\n\r\n[admin:Pellorin]\r\nSchedulerUsername = me\r\n\r\n"
      "[MAIL:a]\r\n; relay\r\n  Server = old \r\nPort=25\r\n\r\nLast = 1 \r\n[SQL:odd]\nx = 1\n");
  const auto document = folder.Loaded();
  Section& mail = *document->GetSection("MAIL:a");
  mail.SetValue("Port", "587");
  mail.SetValue("Added", "\u20AC");
  document->Add("SQL:first", SectionType::Sql).SetValue("x", "1");
  document->Add("SQL:second", SectionType::Sql).SetValue("y", "2");
  document->Add("SQL:without values", SectionType::Sql).SetValue("z", "");
  document->Save();
  EXPECT_EQ(folder.IniBytes(),
            "; of the mail team\r\n\r\n[admin:Pellorin]\r\nSchedulerUsername = me\r\n\r\n"
            "[MAIL:a]\r\n; relay\r\n  Server = old \r\nPort=587\r\n\r\nLast = 1 \r\nAdded=\x80\r\n"
            "[SQL:odd]\nx = 1\n[SQL:second]\r\ny=2\r\n[SQL:first]\r\nx=1\r\n");
  EXPECT_EQ(document->LastSave().written, (std::vector<std::string>{"SQL:second", "SQL:first", "MAIL:a"}));
  EXPECT_FALSE(document->HasChanges());

  // What was saved is original now, and its removal is written too.
  document->Delete("SQL:first");
  mail.Delete("Server");
  mail.SetValue("Port", "25");
  document->Save();
  EXPECT_EQ(folder.IniBytes(),
            "; of the mail team\r\n\r\n[admin:Pellorin]\r\nSchedulerUsername = me\r\n\r\n"
            "[MAIL:a]\r\n; relay\r\nPort=25\r\nLast=1\r\n\r\nAdded=\x80\r\n"
            "[SQL:odd]\nx = 1\n[SQL:second]\r\ny=2\r\n");
  EXPECT_EQ(document->LastSave().removed, std::vector<std::string>{"SQL:first"});
  EXPECT_EQ(Shown(*document),
            "2admin:Pellorin{SchedulerUsername=me;}\n0MAIL:a{Port=25;Last=1;Added=\u20AC;}\n"
            "1SQL:odd{x=1;}\n1SQL:second{y=2;}\n1SQL:without values{z=;}\n");
}

TEST(IniSave, ReplacesADeletedSectionByANewOneOfItsName) {
  const ServiceFolder folder("[MAIL:a]\r\nold=1\r\n[SQL:b]\r\nx=1\r\n");
  const auto document = folder.Loaded();
  document->Delete("MAIL:a");
  document->Add("MAIL:a", SectionType::Mail).SetValue("new", "2");
  document->Save();
  EXPECT_EQ(folder.IniBytes(), "[SQL:b]\r\nx=1\r\n[MAIL:a]\r\nnew=2\r\n");
}

TEST(IniSave, ScramblesPasswordsOnTheDiskOnly) {
  const ServiceFolder folder("[MAIL:a]\r\nPassword=Cqf\\Gzs\r\nPasswords=clear\r\n");
  const auto document = folder.Loaded();
  Section& mail = *document->GetSection("MAIL:a");
  EXPECT_EQ(Shown(mail), "0MAIL:a{Password=Secr3;Passwords=clear;}");
  mail.SetValue("Password", "abc");
  Section& sql = document->Add("SQL:b", SectionType::Sql);
  sql.SetValue("SqlPassword", "line\r\nbreak \0"s);  // any character of the code page has a scrambled form
  sql.SetValue("password", "clear");                 // names of passwords count in their own letter case only
  document->AdminSection().SetValue("SchedulerPassword", "secret!");
  document->Save();
  EXPECT_EQ(folder.IniBytes(), "[MAIL:a]\r\nPassword=ulf\\\r\nPasswords=clear\r\n[SQL:b]\r\nSqlPassword=" +
                                   EncryptString("line\r\nbreak \0"s, kPasswordKey) +
                                   "\r\npassword=clear\r\n"
                                   "[ADMIN:Pellorin]\r\nSchedulerPassword=cqf\\Gdlxxk\r\n");
  EXPECT_EQ(folder.Loaded()->GetSection("SQL:b")->GetValue("SqlPassword"), "line\r\nbreak \0"s);
}

TEST(IniSave, RefusesWhatTheFileCannotHold) {
  const std::string lineBreak = " holds a line break or a NUL character.";
  const std::string outside =
      " holds a character that Pellorin.ini cannot hold (it is outside code page 1252).";
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"Subject", "a\nb", lineBreak},     {"Subject", "a\r", lineBreak},
      {"Subject", "a\0b"s, lineBreak},    {"Subject", "snow\u2603", outside},
      {"Subject", "broken\xC3", outside}, {"Password", "snow\u2603", outside},
  };
  const std::string before = "[MAIL:a]\r\nSubject=s\r\n[SQL:b]\r\nx=1\r\n";
  const ServiceFolder folder(before);
  for (const auto& [name, value, reason] : rows) {
    SCOPED_TRACE(value);
    const auto document = folder.Loaded();
    document->GetSection("MAIL:a")->SetValue(name, value);
    EXPECT_EQ(FailureOf([&] { document->Save(); }),
              CannotSave("MAIL:a", "The value of " + name + reason, folder.IniPath()));
    EXPECT_EQ(folder.IniBytes(), before);
    EXPECT_TRUE(document->HasChanges());
  }
  const auto document = folder.Loaded();
  document->Add("MAIL:\u2603", SectionType::Mail).SetValue("x", "1");
  EXPECT_EQ(
      FailureOf([&] { document->Save(); }),
      CannotSave("MAIL:\u2603", "Its name holds a character outside code page 1252.", folder.IniPath()));
}

TEST(IniSave, NeverWritesASectionThatWasCutOffOnLoading) {
  // Name and "=" are 5 bytes, the NULs behind the line and behind all lines 2 more.
  for (const std::size_t length : {9993, 9994}) {
    const std::string value(length, 'v');
    const ServiceFolder folder("[MAIL:a]\r\nlong=" + value + "\r\n[SQL:b]\r\nx=1\r\n");
    const auto document = folder.Loaded();
    Section& section = *document->GetSection("MAIL:a");
    EXPECT_EQ(section.GetValue("long").size(), 9993u);
    section.SetValue("long", "short");
    document->GetSection("SQL:b")->SetValue("x", "2");  // is written, being the last
    const std::string failure = FailureOf([&] { document->Save(); });
    if (length == 9993) {
      EXPECT_EQ(failure, "no failure");
      continue;
    }
    EXPECT_EQ(
        failure,
        CannotSave("MAIL:a", "The file holds more of this section than the 10,000 bytes that could be read.",
                   folder.IniPath()));
    EXPECT_EQ(folder.IniBytes(), "[MAIL:a]\r\nlong=" + value + "\r\n[SQL:b]\r\nx=2\r\n");
  }
}

TEST(IniSave, WritesNoSectionThatCouldNotBeReadAgain) {
  const ServiceFolder folder("[MAIL:a]\r\nx=1\r\n");
  const auto document = folder.Loaded();
  Section& section = *document->GetSection("MAIL:a");
  section.SetValue("long", std::string(9990, 'v'));  // with "x=1" and "long=" one byte too many
  EXPECT_EQ(FailureOf([&] { document->Save(); }),
            CannotSave("MAIL:a", "Its settings are longer than the 10,000 bytes that can be read again.",
                       folder.IniPath()));
  EXPECT_EQ(folder.IniBytes(), "[MAIL:a]\r\nx=1\r\n");
  section.SetValue("long", std::string(9989, 'v'));
  document->Save();
  EXPECT_EQ(folder.Loaded()->GetSection("MAIL:a")->GetValue("long").size(), 9989u);
}

TEST(IniSave, RefusesANameThatCouldNotBeReadAgain) {
  std::string ini;
  for (int number = 100; number < 199; ++number)  // 99 names of 100 bytes: 9,900 of the 9,998 that are read
    ini += "[MAIL:" + std::string(91, 'm') + std::to_string(number) + "]\r\nx=1\r\n";
  for (const std::size_t length : {92, 93}) {
    const ServiceFolder folder(ini);
    const auto document = folder.Loaded();
    document->Add("MAIL:" + std::string(length, 'n'), SectionType::Mail).SetValue("x", "1");
    const std::string failure = FailureOf([&] { document->Save(); });
    EXPECT_EQ(failure == "no failure", length == 92) << failure;
    EXPECT_EQ(folder.IniBytes().size() > ini.size(), length == 92);
    EXPECT_TRUE(folder.Loaded()->NamesNotLoaded().empty());
  }
}

TEST(IniSave, NeverOverwritesASectionWhoseNameWasNotLoaded) {
  std::string bytes;
  for (int number = 100; number < 800; ++number) bytes += "[MAIL:server " + std::to_string(number) + "]\r\n";
  bytes += "[ADMIN:Pellorin]\r\nSchedulerUsername=me\r\n[no colon]\r\n[Server]";
  const ServiceFolder folder(bytes);  // 16 bytes for each name: 624 of them and 14 bytes of the next
  const auto document = folder.Loaded();
  EXPECT_EQ(document->NumOfSections(SectionType::Mail), 624);
  ASSERT_EQ(document->NamesNotLoaded().size(), 79u);
  EXPECT_EQ(document->NamesNotLoaded().front(), "MAIL:server 724");
  EXPECT_EQ(document->NamesNotLoaded().back(), "Server");
  document->AdminSection().SetValue("SchedulerUsername", "other");
  EXPECT_EQ(FailureOf([&] { document->Save(); }),
            CannotSave("ADMIN:Pellorin", "The file already holds a section of this name that was not loaded.",
                       folder.IniPath()));
  EXPECT_EQ(folder.IniBytes(), bytes);
}

TEST(IniSave, KeepsACopyOfAFileOfNulsBeforeTheFirstWrite) {
  const std::string nuls(100, '\0');
  const ServiceFolder folder(nuls);
  folder.Write("Pellorin.ini.damaged", "an older one");
  const auto document = folder.Loaded();
  document->Add("MAIL:a", SectionType::Mail).SetValue("x", "1");
  document->AdminSection().SetValue("SchedulerUsername", "me");
  document->Save();
  EXPECT_EQ(folder.IniBytes(), "[MAIL:a]\r\nx=1\r\n[ADMIN:Pellorin]\r\nSchedulerUsername=me\r\n");
  EXPECT_EQ(folder.Read("Pellorin.ini.damaged"), "an older one");
  EXPECT_EQ(folder.Read("Pellorin.ini.damaged-2"), nuls);
  EXPECT_FALSE(folder.Has("Pellorin.ini.damaged-3"));
}

TEST(IniSave, TakesTheFileAsItIsAtThatMoment) {
  const ServiceFolder folder("[MAIL:a]\r\nx=1\r\n[SQL:b]\r\ny=1\r\n");
  const auto document = folder.Loaded();
  folder.Write("Pellorin.ini", "; new\r\n[SQL:b]\r\ny=changed\r\n[MAIL:a]\r\nx=1\r\n[MAIL:other]\r\nz=1\r\n");
  document->GetSection("MAIL:a")->SetValue("x", "2");
  document->Add("mail:OTHER", SectionType::Mail).SetValue("z", "2");
  EXPECT_EQ(FailureOf([&] { document->Save(); }),
            CannotSave("mail:OTHER", "The file already holds a section of this name that was not loaded.",
                       folder.IniPath()));
  document->Delete("mail:OTHER");
  document->Save();
  EXPECT_EQ(folder.IniBytes(), "; new\r\n[SQL:b]\r\ny=changed\r\n[MAIL:a]\r\nx=2\r\n[MAIL:other]\r\nz=1\r\n");
  // A file that went away or was emptied gets everything back.
  fs::remove(folder.IniPath());
  document->GetSection("SQL:b")->SetValue("y", "3");
  document->Save();
  EXPECT_EQ(folder.IniBytes(), "[SQL:b]\r\ny=3\r\n[MAIL:a]\r\nx=2\r\n");
  folder.Write("Pellorin.ini", "\r\n");
  document->GetSection("SQL:b")->SetValue("y", "4");
  document->Save();
  EXPECT_EQ(folder.IniBytes(), "\r\n[SQL:b]\r\ny=4\r\n[MAIL:a]\r\nx=2\r\n");
}

TEST(IniSave, RestoresALostFileThoughTheFirstAttemptFails) {
  const ServiceFolder folder("[MAIL:a]\r\nx=1\r\n[SQL:b]\r\ny=1\r\n[SQL:c]\r\n");
  int attempts = 0;
  for (bool hasFailed = true; hasFailed; ++attempts) {
    folder.Write("Pellorin.ini", "[MAIL:a]\r\nx=1\r\n[SQL:b]\r\ny=1\r\n[SQL:c]\r\n");
    test::FailingFiles files(SystemFiles());
    const auto document = folder.Loaded(files);
    document->GetSection("SQL:b")->SetValue("y", "2");
    fs::remove(folder.IniPath());
    files.FailAt(attempts + 1);
    hasFailed = FailureOf([&] { document->Save(); }) != "no failure";
    files.FailAt(0);
    EXPECT_EQ(document->HasChanges(), hasFailed) << attempts;
    document->Save();
    EXPECT_EQ(folder.IniBytes(), "[SQL:c]\r\n[SQL:b]\r\ny=2\r\n[MAIL:a]\r\nx=1\r\n") << attempts;
    files.FailAt(0);
    document->Save();
    EXPECT_EQ(files.Count(), 0);  // nothing is left to write
  }
  EXPECT_GT(attempts, 30);
}

TEST(IniSave, RefusesAReadOnlyFileForEverybody) {
  const std::string bytes = "[MAIL:a]\r\nx=1\r\n[SQL:b]\r\ny=1\r\n";
  const ServiceFolder folder(bytes);
  fs::permissions(folder.IniPath(), fs::perms::owner_read | fs::perms::group_read);
  const auto document = folder.Loaded();
  document->GetSection("MAIL:a")->SetValue("x", "2");
  document->Delete("SQL:b");
  EXPECT_EQ(FailureOf([&] { document->Save(); }),
            CannotSave("SQL:b", "The file is read-only", folder.IniPath()));
  EXPECT_EQ(folder.IniBytes(), bytes);
  EXPECT_EQ(Shown(*document), "0MAIL:a{x=2;}!\n1SQL:b{y=1;}!\n2ADMIN:Pellorin{}\n");
  fs::permissions(folder.IniPath(), fs::perms::owner_write, fs::perm_options::add);
  document->Save();
  EXPECT_EQ(folder.IniBytes(), "[MAIL:a]\r\nx=2\r\n");
}

}  // namespace
}  // namespace pellorin
