// From the start of the program to the first window.
#include <QRegularExpression>
#include <filesystem>

#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

class StartUp : public WindowFixture {};

TEST_F(StartUp, EndsInAnotherFolderThanTheServices) {
  installFolder = folder / "Service2";
  messages.WillShow(Critical(
      "While this utility is started in " + program + ", Pellorin.DLL is installed in " + installFolder +
          ". This configuration utility must be started in the same directory as the DLL.",
      "Wrong Location"));
  EXPECT_FALSE(Start("", "InstallMode"));
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(log.empty());
  EXPECT_FALSE(folder.Has("Service/Pellorin.ini"));
  installFolder = folder / "sERVICE/";
  EXPECT_TRUE(Start(kUsual));
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
  const std::string selectors = "cmbMailServer cmbSQLServer cmbQueues";
  const struct {
    std::string ini;
    bool hasQueue;
    const char *page, *entries, *shown, *on;
  } cases[] = {{kUsual, false, "Mail Servers", "one two|DB1|", "one|DB1|", "cmbMailServer cmbSQLServer"},
               {"[sql:DB1]\r\n[SQL:2]\r\n", true, "Sql Servers", "|DB1 2|Night", "|DB1|Night",
                "cmbSQLServer cmbQueues"},
               {kAdmin, true, "Mail Servers", "||Night", "||Night", "cmbQueues"},
               {kAdmin, false, "Mail Servers", "||", "||", ""}};
  for (const auto& row : cases) {
    SCOPED_TRACE(row.ini);
    if (row.hasQueue) WriteQueue("Night", kQueueXml);
    ASSERT_TRUE(Start(row.ini));
    if (row.hasQueue) std::filesystem::remove(QueuePath("Night"));
    Names entries;
    for (const std::string& selector : Words(selectors)) entries.push_back(Joined(Entries(selector), " "));
    EXPECT_EQ(Joined(entries, "|"), row.entries);
    EXPECT_EQ(Text(selectors), row.shown);
    EXPECT_EQ(OnOf(selectors), row.on);
    EXPECT_EQ(Page(), row.page);
    EXPECT_EQ(IsModified(), row.hasQueue);  // showing a queue stores the defaults of what it lacks
  }
  // Nothing is configured: of all controls of the pages only those that add are on.
  Names on;
  const QRegularExpression prefixes(QStringLiteral("^(btn|chk|cmb|Label|lbl|lst|opt|txt)"));
  for (const QWidget* control : window->findChildren<QWidget*>(prefixes))
    if (control->isEnabled()) on.push_back(control->objectName().toStdString());
  std::ranges::sort(on);
  EXPECT_EQ(on, Words("Label45 Label52 btnAddNewMailServer btnAddNewSqlServer btnAddQueue btnExit btnHelp "
                      "lblSchedulerPassword lblStatus txtSchedulerPassword txtSchedulerUsername"));
  Add("first");
  EXPECT_EQ(OnOf("btnSave btnCancel cmbMailServer txtMailUsername"), "btnSave btnCancel cmbMailServer");
}

TEST_F(StartUp, OpensTheHelpOfAnInstallation) {
  const std::string upgraded = kMailOne + "[SQL:DB1]\r\nConfiguredDB=master\r\nAccessType=all\r\n";
  const struct {
    std::string ini, commandLine, exit, page, help;  // without help: no installation
  } cases[] = {
      {kUsual, "", "&Exit", "Mail Servers", ""},
      {kUsual, "Install,Mode", "&Exit", "Mail Servers", ""},
      {kUsual, "InstallMode", "Finish", "Mail Servers", "GettingStarted.chm|GettingStarted.htm"},
      {upgraded, "x,aINSTALLMODEb", "Finish", "Sql Servers", "UpgradeInfo.chm|UpgradeInfo.htm"},
      {"[ADMIN:x]\r\n", "InstallMode", "Finish", "Mail Servers", "GettingStarted.chm|GettingStarted.htm"}};
  onRegister = [this] { log.clear(); };  // the event sources are not looked at here
  onHelp = [this] { EXPECT_TRUE(window->isVisible()); };
  for (const auto& row : cases) {
    ASSERT_TRUE(Start(row.ini, row.commandLine));
    EXPECT_EQ(Text("btnExit"), row.exit) << row.commandLine;
    EXPECT_EQ(Page(), row.page);
    EXPECT_EQ(Joined(log, "; "), row.help.empty() ? "" : program + "/" + row.help) << row.commandLine;
  }
  // Help that fails is told, and the window goes on.
  onHelp = [] { throw NumberedError(7, "Viewer", "No viewer"); };
  messages.WillShow(Critical("No viewer\r\n\r\nError Number: 7\r\nError Source: Viewer"));
  EXPECT_TRUE(Start(kUsual, "InstallMode"));
}

TEST_F(StartUp, EndsWhenTheFileCannotBeLoaded) {
  const std::string ini = "[MAIL:one]\r\nSendMethod";
  messages.WillShow(
      Critical("Could not load a parameter from string SendMethod. Parameters are expected to be in the form "
               "Name=Value. Section MAIL:one. Please check configuration settings for Pellorin.\r\n" +
               IniPath() + "\r\n\r\nError Number: 50110\r\nError Source: PellorinConfig.exe, Section, Load"));
  EXPECT_FALSE(Start(ini));
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(IniBytes(), ini);
}

TEST_F(StartUp, SaysWhoMayNotWriteTheConfiguration) {
  WriteIni(kUsual);
  std::filesystem::permissions(IniPath(), std::filesystem::perms::owner_read);
  ASSERT_TRUE(Start(""));
  EXPECT_EQ(Text("lblStatus"), "The configuration can be read, but not changed: " + IniPath() +
                                   " is write-protected for this user.");
  EXPECT_TRUE(Find("lblStatus").isVisible());
  std::filesystem::permissions(IniPath(), std::filesystem::perms::owner_all);
  ASSERT_TRUE(Start(""));
  EXPECT_FALSE(Find("lblStatus").isVisible());
}

}  // namespace
}  // namespace pellorin::test
