#include <gtest/gtest.h>

#include <filesystem>

#include "config/PasswordScrambling.h"
#include "tests/config/ServiceFolder.h"
#include "tests/support/FailingFiles.h"

namespace pellorin::test {
namespace {

namespace fs = std::filesystem;
using std::string_literals::operator""s;

TEST(IniSave, WritesOnlyChangedSectionsAndKeepsEveryOtherByte) {
  const std::string start =
      "; of the mail team\r\n\r\n[admin:Pellorin]\r\nSchedulerUsername = me\r\n\r\n[MAIL:a]\r\n; relay\r\n";
  const Store store(start + "  Server = old \r\nPort=25\r\n\r\nLast = 1 \r\n[SQL:odd]\nx = 1\n");
  Section& mail = store["MAIL:a"];
  mail.SetValue("Port", "587");
  mail.SetValue("Added", "\u20AC");
  store->Add("SQL:first", SectionType::Sql).SetValue("x", "1");
  store->Add("SQL:second", SectionType::Sql).SetValue("y", "2");
  store->Add("SQL:without values", SectionType::Sql).SetValue("z", "");
  store->Save();
  EXPECT_EQ(store.IniBytes(), start + "  Server = old \r\nPort=587\r\n\r\nLast = 1 \r\nAdded=\x80\r\n" +
                                  "[SQL:odd]\nx = 1\n[SQL:second]\r\ny=2\r\n[SQL:first]\r\nx=1\r\n");
  EXPECT_EQ(store->LastSave().written, (std::vector<std::string>{"SQL:second", "SQL:first", "MAIL:a"}));
  EXPECT_FALSE(store->HasChanges());

  // What was saved is original now: its removal is written too, and a new section may take its name.
  for (const char* name : {"SQL:first", "SQL:second"}) store->Delete(name);
  store->Add("SQL:second", SectionType::Sql).SetValue("new", "3");
  mail.Delete("Server");
  mail.SetValue("Port", "25");
  store->Save();
  EXPECT_EQ(store.IniBytes(), start + "Port=25\r\nLast=1\r\n\r\nAdded=\x80\r\n[SQL:odd]\nx = 1\n" +
                                  "[SQL:second]\r\nnew=3\r\n");
  EXPECT_EQ(store->LastSave().removed, (std::vector<std::string>{"SQL:second", "SQL:first"}));
  EXPECT_EQ(Shown(*store),
            "2admin:Pellorin{SchedulerUsername=me;}\n0MAIL:a{Port=25;Last=1;Added=\u20AC;}\n"
            "1SQL:odd{x=1;}\n1SQL:without values{z=;}\n1SQL:second{new=3;}\n");
}

TEST(IniSave, ScramblesPasswordsOnTheDiskOnly) {
  const Store store("[MAIL:a]\r\nPassword=Cqf\\Gzs\r\nPasswords=clear\r\n");
  Section& mail = store["MAIL:a"];
  EXPECT_EQ(Shown(mail), "0MAIL:a{Password=Secr3;Passwords=clear;}");
  mail.SetValue("Password", "abc");
  Section& sql = store->Add("SQL:b", SectionType::Sql);
  sql.SetValue("SqlPassword", "line\r\nbreak \0"s);  // any character of the code page has a scrambled form
  sql.SetValue("password", "clear");                 // names of passwords count in their own letter case only
  store->AdminSection().SetValue("SchedulerPassword", "secret!");
  store->Save();
  EXPECT_EQ(store.IniBytes(), "[MAIL:a]\r\nPassword=ulf\\\r\nPasswords=clear\r\n[SQL:b]\r\nSqlPassword=" +
                                  EncryptString("line\r\nbreak \0"s, kPasswordKey) +
                                  "\r\npassword=clear\r\n"
                                  "[ADMIN:Pellorin]\r\nSchedulerPassword=cqf\\Gdlxxk\r\n");
  EXPECT_EQ(store.Loaded()->GetSection("SQL:b")->GetValue("SqlPassword"), "line\r\nbreak \0"s);
}

TEST(IniSave, RefusesWhatTheFileCannotHold) {
  const std::string lineBreak = " holds a line break or a NUL character.";
  const std::string outside =
      " holds a character that Pellorin.ini cannot hold (it is outside code page 1252).";
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"Subject", "a\nb", lineBreak},      {"Subject", "a\r", lineBreak},
      {"Subject", "a\0b"s, lineBreak},     {"Subject", "snow\u2603", outside},
      {"Password", "broken\xC3", outside},
  };
  const std::string before = "[MAIL:a]\r\nSubject=s\r\n[SQL:b]\r\nx=1\r\n";
  const ServiceFolder folder(before);
  for (const auto& [name, value, reason] : rows) {
    const auto document = folder.Loaded();
    document->GetSection("MAIL:a")->SetValue(name, value);
    ExpectCannotSave(*document, "MAIL:a", "The value of " + name + reason, folder.IniPath());
    EXPECT_EQ(folder.IniBytes(), before) << value;
    EXPECT_TRUE(document->HasChanges()) << value;
  }
  const auto document = folder.Loaded();
  document->Add("MAIL:\u2603", SectionType::Mail).SetValue("x", "1");
  ExpectCannotSave(*document, "MAIL:\u2603", "Its name holds a character outside code page 1252.",
                   folder.IniPath());
}

// Name and "=" are 5 bytes, the NULs behind the line and behind all lines 2 more.
TEST(IniSave, NeverWritesASectionThatWasCutOffOnLoading) {
  const std::string longest = "[MAIL:a]\r\nlong=" + std::string(9993, 'v');
  for (const bool isTooLong : {false, true}) {
    const std::string whole = longest + (isTooLong ? "v" : "") + "\r\n[SQL:b]\r\nx=";
    const Store store(whole + "1\r\n");
    Section& section = store["MAIL:a"];
    EXPECT_EQ(section.GetValue("long").size(), 9993u);
    section.SetValue("long", "short");
    store["SQL:b"].SetValue("x", "2");  // is written, being the last
    if (isTooLong)
      ExpectCannotSave(*store, "MAIL:a",
                       "The file holds more of this section than the 10,000 bytes that could be read.",
                       store.IniPath());
    else
      store->Save();
    EXPECT_EQ(store.IniBytes(), isTooLong ? whole + "2\r\n" : "[MAIL:a]\r\nlong=short\r\n[SQL:b]\r\nx=2\r\n");
  }
}

TEST(IniSave, WritesNothingThatCouldNotBeReadAgain) {
  const ServiceFolder folder("[MAIL:a]\r\nx=1\r\n");
  auto document = folder.Loaded();
  Section& section = *document->GetSection("MAIL:a");
  section.SetValue("long", std::string(9990, 'v'));  // with "x=1" and "long=" one byte too many
  ExpectCannotSave(*document, "MAIL:a",
                   "Its settings are longer than the 10,000 bytes that can be read again.", folder.IniPath());
  EXPECT_EQ(folder.IniBytes(), "[MAIL:a]\r\nx=1\r\n");
  section.SetValue("long", std::string(9989, 'v'));
  document->Save();
  EXPECT_EQ(folder.Loaded()->GetSection("MAIL:a")->GetValue("long").size(), 9989u);

  std::string ini;
  for (int number = 100; number < 199; ++number)  // 99 names of 100 bytes: 9,900 of the 9,998 that are read
    ini += "[MAIL:" + std::string(91, 'm') + std::to_string(number) + "]\r\nx=1\r\n";
  for (const std::size_t length : {93, 92}) {
    folder.Write("Pellorin.ini", ini);
    document = folder.Loaded();
    document->Add("MAIL:" + std::string(length, 'n'), SectionType::Mail).SetValue("x", "1");
    EXPECT_EQ(FailureOfSaving(*document) == kNoFailure, length == 92) << length << " letters";
    EXPECT_EQ(folder.IniBytes().size() > ini.size(), length == 92);
    EXPECT_TRUE(folder.Loaded()->NamesNotLoaded().empty());
  }
}

TEST(IniSave, NeverOverwritesASectionWhoseNameWasNotLoaded) {
  std::string bytes;
  for (int number = 100; number < 800; ++number) bytes += "[MAIL:server " + std::to_string(number) + "]\r\n";
  bytes += "[ADMIN:Pellorin]\r\nSchedulerUsername=me\r\n[no colon]\r\n[Server]";
  const Store store(bytes);  // 16 bytes for each name: 624 of them and 14 bytes of the next
  EXPECT_EQ(store->NumOfSections(SectionType::Mail), 624);
  ASSERT_EQ(store->NamesNotLoaded().size(), 79u);
  EXPECT_EQ(store->NamesNotLoaded().front() + store->NamesNotLoaded().back(), "MAIL:server 724Server");
  store->AdminSection().SetValue("SchedulerUsername", "other");
  ExpectCannotSave(*store, "ADMIN:Pellorin",
                   "The file already holds a section of this name that was not loaded.", store.IniPath());
  EXPECT_EQ(store.IniBytes(), bytes);
}

TEST(IniSave, KeepsACopyOfAFileOfNulsBeforeTheFirstWrite) {
  const std::string nuls(100, '\0');
  const Store store(nuls);
  store.Write("Pellorin.ini.damaged", "an older one");
  store->Add("MAIL:a", SectionType::Mail).SetValue("x", "1");
  store->AdminSection().SetValue("SchedulerUsername", "me");
  store->Save();
  EXPECT_EQ(store.IniBytes(), "[MAIL:a]\r\nx=1\r\n[ADMIN:Pellorin]\r\nSchedulerUsername=me\r\n");
  EXPECT_EQ(store.Read("Pellorin.ini.damaged"), "an older one");
  EXPECT_EQ(store.Read("Pellorin.ini.damaged-2"), nuls);
  EXPECT_FALSE(store.Has("Pellorin.ini.damaged-3"));
}

TEST(IniSave, TakesTheFileAsItIsAtThatMoment) {
  const Store store("[MAIL:a]\r\nx=1\r\n[SQL:b]\r\ny=1\r\n");
  store.Write("Pellorin.ini", "; new\r\n[SQL:b]\r\ny=changed\r\n[MAIL:a]\r\nx=1\r\n[MAIL:other]\r\nz=1\r\n");
  store["MAIL:a"].SetValue("x", "2");
  store->Add("mail:OTHER", SectionType::Mail).SetValue("z", "2");
  ExpectCannotSave(*store, "mail:OTHER", "The file already holds a section of this name that was not loaded.",
                   store.IniPath());
  store->Delete("mail:OTHER");
  store->Save();
  EXPECT_EQ(store.IniBytes(), "; new\r\n[SQL:b]\r\ny=changed\r\n[MAIL:a]\r\nx=2\r\n[MAIL:other]\r\nz=1\r\n");
  const std::string utf16 = "\xFF\xFE["s + '\0';
  store.Write("Pellorin.ini", utf16);
  store["MAIL:a"].SetValue("x", "3");
  EXPECT_NE(FailureOfSaving(*store).find("It is encoded in UTF-16."), std::string::npos);
  EXPECT_EQ(store.IniBytes(), utf16) << "an encoding that is not known is never written into";
  // A file that was emptied gets everything back, as one that went away does.
  store.Write("Pellorin.ini", "\r\n");
  store["SQL:b"].SetValue("y", "4");
  store->Save();
  EXPECT_EQ(store.IniBytes(), "\r\n[SQL:b]\r\ny=4\r\n[MAIL:a]\r\nx=3\r\n");
}

TEST(IniSave, RestoresALostFileThoughTheFirstAttemptFails) {
  const std::string bytes = "[MAIL:a]\r\nx=1\r\n[SQL:b]\r\ny=1\r\n[SQL:c]\r\n";
  const ServiceFolder folder;
  int attempts = 0;
  for (bool hasFailed = true; hasFailed; ++attempts) {
    folder.Write("Pellorin.ini", bytes);
    FailingFiles files(SystemFiles());
    const auto document = folder.Loaded(files);
    document->GetSection("SQL:b")->SetValue("y", "2");
    fs::remove(folder.IniPath());
    files.FailAt(attempts + 1);
    hasFailed = FailureOfSaving(*document) != kNoFailure;
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

}  // namespace
}  // namespace pellorin::test
