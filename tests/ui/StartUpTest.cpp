// From the start of the program to the first window.
#include <unistd.h>

#include <QTabWidget>

#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

class StartUp : public WindowFixture {
 protected:
  Message WrongLocation() const {
    return Critical("While this utility is started in " + program + ", Pellorin.DLL is installed in " +
                        installFolder +
                        ". This configuration utility must be started in the same directory as the DLL.",
                    "Wrong Location");
  }
};

TEST_F(StartUp, EndsInAnotherFolderThanTheServices) {
  installFolder = folder / "Service2";
  messages.WillShow(WrongLocation());
  EXPECT_FALSE(Start("", "InstallMode"));
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(log.empty());
  EXPECT_FALSE(folder.Has("Service/Pellorin.ini"));
}

TEST_F(StartUp, TakesOtherSpellingsOfItsFolder) {
  ASSERT_EQ(::symlink(program.c_str(), (folder / "link").c_str()), 0);
  for (const std::string& spelling : {folder / "sERVICE", folder / "Service//", folder / "link/",
                                      folder / "link/../Service", folder / "LINK"}) {
    installFolder = spelling;
    EXPECT_TRUE(Start(kUsual)) << spelling;
  }
  for (const std::string& other : {folder / "Service/QUEUEDefinitions", folder / "Servic", std::string()}) {
    installFolder = other;
    messages.WillShow(WrongLocation());
    EXPECT_FALSE(Start(kUsual)) << other;
  }
}

TEST_F(StartUp, FindsInstallModeInTheCommandLine) {
  const struct {
    const char* line;
    bool isInstall;
  } cases[] = {{"", false},         {"InstallMode", true},         {"a,installmode,b", true},
               {"Install", false},  {"x,aINSTALLMODEb", true},     {"Install,Mode", false},
               {"--quiet,", false}, {"-style x installMode", true}};
  for (const auto& row : cases) {
    log.clear();
    ASSERT_TRUE(Start(kUsual, row.line));
    EXPECT_EQ(Text("btnExit"), row.isInstall ? "Finish" : "&Exit") << row.line;
    EXPECT_EQ(log.size(), row.isInstall ? 3u : 2u) << row.line;
  }
}

TEST_F(StartUp, RegistersTheEventSourcesOnceLoaded) {
  onRegister = [this] { EXPECT_EQ(Entries("cmbMailServer"), (Names{"one", "two"})); };
  ASSERT_TRUE(Start(kUsual));
  EXPECT_EQ(log, (Names{"EventMsgs.dll||" + program + "|Pellorin Queue|Pellorin",
                        "EventMsgs.dll||" + program + "|Pellorin.exe|Pellorin"}));
  onRegister = [] { throw FileError(13, "Not allowed", "/reg"); };
  ::testing::internal::CaptureStderr();
  EXPECT_TRUE(Start(kUsual));
  const std::string line = ::testing::internal::GetCapturedStderr();
  const std::string told =
      "PellorinConfig: event-log source \"Pellorin Queue\" not registered: /reg: Not allowed\n";
  EXPECT_NE(line.find(told), std::string::npos) << line;
  EXPECT_EQ(line.rfind("PellorinConfig"), line.find("PellorinConfig")) << "more than one line";
}

TEST_F(StartUp, ChoosesTheFirstPage) {
  const std::string queuesOnly = "[ADMIN:Pellorin]\r\nSchedulerUsername=sched\r\n";
  const struct {
    const char* what;
    std::string ini;
    bool hasQueue;
    const char* page;
    std::vector<Names> lists;  // mail servers, instances, queues
  } cases[] = {
      {"mail and instance", kUsual, false, "Mail Servers", {{"one", "two"}, {"DB1"}, {}}},
      {"instance only", "[sql:DB1]\r\n[SQL:2]\r\n", true, "Sql Servers", {{}, {"DB1", "2"}, {"Night"}}},
      {"queue only", queuesOnly, true, "Mail Servers", {{}, {}, {"Night"}}},
      {"mail only", kMailTwo, false, "Mail Servers", {{"two"}, {}, {}}},
      {"nothing", queuesOnly, false, "Mail Servers", {{}, {}, {}}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    if (row.hasQueue) folder.Write("Service/QUEUEDefinitions/Night.xml", kQueueXml);
    ASSERT_TRUE(Start(row.ini));
    if (row.hasQueue) ::unlink((folder / "Service/QUEUEDefinitions/Night.xml").c_str());
    EXPECT_EQ(Page(), row.page);
    const char* lists[] = {"cmbMailServer", "cmbSQLServer", "cmbQueues"};
    for (std::size_t kind = 0; kind < 3; ++kind) {
      const Names& expected = row.lists[kind];
      EXPECT_EQ(Entries(lists[kind]), expected);
      EXPECT_EQ(IsOn(lists[kind]), !expected.empty()) << lists[kind];
      EXPECT_EQ(Text(lists[kind]), expected.empty() ? "" : expected[0]);
    }
    const bool isNew = row.lists[0].empty() && row.lists[1].empty() && row.lists[2].empty();
    EXPECT_EQ(IsOn("btnSave"), !isNew);
    EXPECT_FALSE(IsModified());
  }
}

TEST_F(StartUp, OffersANewInstallationOnlyToAdd) {
  ASSERT_TRUE(Start(""));
  EXPECT_EQ(IniBytes(), "");
  EXPECT_EQ(Page(), "Mail Servers");
  EXPECT_EQ(
      OnOf("btnSave btnCancel cmbMailServer txtSenderEmail optNTLM btnDeleteMailSettings btnTestMailServer "
           "cmbSQLServer cmbQueues btnAddNewMailServer btnExit btnHelp tabMain txtSchedulerUsername"),
      "btnAddNewMailServer btnExit btnHelp tabMain txtSchedulerUsername");
  EXPECT_EQ(Text("lblConfiguredDB"), "None");
  Press(Qt::Key_S, Qt::ControlModifier);  // Save is off
  Add("first");
  EXPECT_EQ(OnOf("btnSave btnCancel cmbMailServer txtMailUsername"), "btnSave btnCancel cmbMailServer");
  Replace("txtSenderEmail", "me@x");
  Replace("txtSchedulerUsername", "sched");
  SaveSuccessfully();
  EXPECT_EQ(Stored("MAIL:first", "SenderEmail") + Stored("ADMIN:Pellorin", "SchedulerUsername"), "me@xsched");
}

TEST_F(StartUp, OpensTheHelpOfAnInstallation) {
  const std::string upgraded = kMailOne + "[SQL:DB1]\r\nConfiguredDB=master\r\nAccessType=all\r\n";
  for (const auto& [ini, page, help] : {std::tuple{kUsual, "Mail Servers", "GettingStarted"},
                                        {upgraded, "Sql Servers", "UpgradeInfo"},
                                        {std::string("[ADMIN:x]\r\n"), "Mail Servers", "GettingStarted"}}) {
    onHelp = [this] { EXPECT_TRUE(window->isVisible()); };
    ASSERT_TRUE(Start(ini, "InstallMode"));
    EXPECT_EQ(Page(), page);
    EXPECT_EQ(log.back(), program + "/" + help + ".chm|" + help + ".htm");
  }
  EXPECT_EQ(Text("lblConfiguredDB"), "None");
  // Help that fails is told, and the window goes on.
  onHelp = [] { throw NumberedError(7, "Viewer", "No viewer"); };
  messages.WillShow(
      {.text = "No viewer\r\n\r\nError Number: 7\r\nError Source: Viewer", .icon = MessageIcon::Critical});
  EXPECT_TRUE(Start(kUsual, "InstallMode"));
}

TEST_F(StartUp, EndsWhenTheFileCannotBeLoaded) {
  const struct {
    const char *ini, *description, *number, *source;
  } cases[] = {
      {"[MAIL:one]\r\nSendMethod", "Could not load a parameter from string SendMethod. ", "50110",
       "PellorinConfig.exe, Section, Load"},
      {"[Mail]\r\n", "Could not read section name: Mail. ", "50101", "PellorinConfig.exe, Ini, Load"},
      {"nothing", "Could not load .INI file", "50100", "PellorinConfig.exe, Ini, Load"},
      {"[MAIL:one]\r\na=1\r\nA=2\r\n", "Section MAIL:one holds an entry twice: ", "457",
       "PellorinConfig.exe, Collection"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.ini);
    messages.WillShowSome();
    EXPECT_FALSE(Start(row.ini));
    EXPECT_FALSE(window->isVisible());
    const Message box = messages.Last();
    EXPECT_TRUE(box.title == "PellorinConfig" && box.icon == MessageIcon::Critical) << box.title;
    EXPECT_TRUE(box.text.starts_with(row.description)) << box.text;
    EXPECT_TRUE(box.text.ends_with("\r\n" + IniPath() + "\r\n\r\nError Number: " + row.number +
                                   "\r\nError Source: " + row.source))
        << box.text;
    EXPECT_EQ(IniBytes(), row.ini);
  }
  ::unlink(IniPath().c_str());
  folder.Write("Service/Pellorin.ini/file", "");
  messages.WillShowSome();
  EXPECT_FALSE(Start(""));
  EXPECT_NE(messages.Last().text.find(IniPath()), std::string::npos);
  EXPECT_TRUE(log.empty());
}

TEST_F(StartUp, NamesWhatItCouldNotRead) {
  std::string ini, expected;
  for (int number = 1000; number < 1060; ++number) {
    const std::string name = "MAIL:" + std::string(380, 'n') + std::to_string(number);
    ini += "[" + name + "]\r\nSenderEmail=x\r\n";
    if (number >= 1025 && number < 1045) expected += "\r\n- " + name;
  }
  messages.WillShow(Plain("This file holds more section names than can be read:\r\n" + IniPath() +
                              "\r\n\r\nNot loaded, and left as they are:" + expected + "\r\n- 15 more",
                          "Tessary Configuration"));
  ASSERT_TRUE(Start(ini));
  EXPECT_EQ(Entries("cmbMailServer").size(), 25u);
}

}  // namespace
}  // namespace pellorin::test
