// From the start of the program to the first window.
#include <unistd.h>

#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

class StartUp : public WindowFixture {};

TEST_F(StartUp, EndsInAnotherFolderThanTheServices) {
  for (const std::string& other : {folder / "Service2", folder / "Service/QUEUEDefinitions", std::string()}) {
    installFolder = other;
    messages.WillShow(
        Critical("While this utility is started in " + program + ", Pellorin.DLL is installed in " + other +
                     ". This configuration utility must be started in the same directory as the DLL.",
                 "Wrong Location"));
    EXPECT_FALSE(Start("", "InstallMode"));
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(log.empty());
    EXPECT_FALSE(folder.Has("Service/Pellorin.ini"));
  }
  ASSERT_EQ(::symlink(program.c_str(), (folder / "link").c_str()), 0);
  for (const std::string& spelling : {folder / "sERVICE", folder / "Service//", folder / "link/"}) {
    installFolder = spelling;
    EXPECT_TRUE(Start(kUsual)) << spelling;
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
  const std::string told = ::testing::internal::GetCapturedStderr();
  EXPECT_NE(
      told.find("PellorinConfig: event-log source \"Pellorin Queue\" not registered: /reg: Not allowed\n"),
      std::string::npos)
      << told;
}

TEST_F(StartUp, ChoosesTheFirstPage) {
  const struct {
    std::string ini;
    bool hasQueue;
    const char* page;
    std::vector<Names> lists;  // mail servers, instances, queues
  } cases[] = {
      {kUsual, false, "Mail Servers", {{"one", "two"}, {"DB1"}, {}}},
      {"[sql:DB1]\r\n[SQL:2]\r\n", true, "Sql Servers", {{}, {"DB1", "2"}, {"Night"}}},
      {kAdmin, true, "Mail Servers", {{}, {}, {"Night"}}},
      {kAdmin, false, "Mail Servers", {{}, {}, {}}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.ini);
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
    EXPECT_EQ(IsModified(), row.hasQueue);  // showing a queue stores the defaults of what it lacks
  }
  // Nothing is configured: all that is left is to add.
  EXPECT_EQ(
      OnOf("btnSave btnCancel cmbMailServer txtSenderEmail optNTLM btnDeleteMailSettings btnTestMailServer "
           "cmbSQLServer cmbQueues btnAddNewMailServer btnExit btnHelp tabMain txtSchedulerUsername"),
      "btnAddNewMailServer btnExit btnHelp tabMain txtSchedulerUsername");
  Add("first");
  EXPECT_EQ(OnOf("btnSave btnCancel cmbMailServer txtMailUsername"), "btnSave btnCancel cmbMailServer");
}

TEST_F(StartUp, OpensTheHelpOfAnInstallation) {
  const std::string upgraded = kMailOne + "[SQL:DB1]\r\nConfiguredDB=master\r\nAccessType=all\r\n";
  const struct {
    std::string ini;
    const char *commandLine, *exit, *page, *help;  // without help: no installation
  } cases[] = {{kUsual, "", "&Exit", "Mail Servers", ""},
               {kUsual, "Install,Mode", "&Exit", "Mail Servers", ""},
               {kUsual, "InstallMode", "Finish", "Mail Servers", "GettingStarted"},
               {upgraded, "x,aINSTALLMODEb", "Finish", "Sql Servers", "UpgradeInfo"},
               {"[ADMIN:x]\r\n", "InstallMode", "Finish", "Mail Servers", "GettingStarted"}};
  onHelp = [this] { EXPECT_TRUE(window->isVisible()); };
  for (const auto& row : cases) {
    log.clear();
    ASSERT_TRUE(Start(row.ini, row.commandLine));
    EXPECT_EQ(Text("btnExit"), row.exit) << row.commandLine;
    EXPECT_EQ(Page(), row.page);
    const std::string help = row.help;
    ASSERT_EQ(log.size(), help.empty() ? 2u : 3u) << row.commandLine;
    if (!help.empty()) {
      EXPECT_EQ(log[2], program + "/" + help + ".chm|" + help + ".htm");
    }
  }
  // Help that fails is told, and the window goes on.
  onHelp = [] { throw NumberedError(7, "Viewer", "No viewer"); };
  messages.WillShow(Critical("No viewer\r\n\r\nError Number: 7\r\nError Source: Viewer"));
  EXPECT_TRUE(Start(kUsual, "InstallMode"));
}

TEST_F(StartUp, EndsWhenTheFileCannotBeLoaded) {
  const std::string ini = "[MAIL:one]\r\nSendMethod";
  messages.WillShowSome();
  EXPECT_FALSE(Start(ini));
  EXPECT_FALSE(window->isVisible());
  const Message box = messages.Last();
  EXPECT_TRUE(box.title == "PellorinConfig" && box.icon == MessageIcon::Critical) << box.title;
  EXPECT_TRUE(box.text.starts_with("Could not load a parameter from string SendMethod. ")) << box.text;
  EXPECT_TRUE(box.text.ends_with(
      "\r\n" + IniPath() + "\r\n\r\nError Number: 50110\r\nError Source: PellorinConfig.exe, Section, Load"))
      << box.text;
  EXPECT_EQ(IniBytes(), ini);
}

}  // namespace
}  // namespace pellorin::test
