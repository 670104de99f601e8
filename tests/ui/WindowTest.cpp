// Save, Cancel, Help and closing, and what is left when saving or loading fails.
#include <sys/stat.h>
#include <unistd.h>

#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

const Message kCancelQuestion =
    Question("Cancel Changes", "Are you sure you want to cancel? All changes will be lost.");
const Message kSaveQuestion = Question("Save Changes", "Would you like to save changes?");

Message Incomplete(const std::string& servers) {
  return Question("Incomplete " + servers + " Server Configuration",
                  "You do not have any " + servers +
                      " Servers configured. Pellorin will not be able to function in this configuration. Do "
                      "you really want to exit?");
}

Message Errors(const std::string& errors) {
  return Warning("Validation Errors", "Please correct the following errors: \r\n" + errors);
}

const std::string kValidQueueXml =
    "<queue every='1' occurstype='once' occursonce='11:00 PM' frequency='daily'/>";

class Window : public WindowFixture {
 protected:
  Message SaveFailure(const std::string& section, const std::string& reason, const std::string& saved,
                      const std::string& unsaved) const {
    return Critical("Could not save section " + section + "\r\n" + reason + "\r\n" + IniPath() +
                    "\r\n\r\nSaved: " + saved + "\r\nNot saved: " + unsaved +
                    "\r\n\r\nError Number: 50111\r\nError Source: PellorinConfig.exe, Section, Save");
  }
  void MakeReadOnly() const { ASSERT_EQ(::chmod(IniPath().c_str(), 0444), 0); }
};

TEST_F(Window, SavesWhatChangedAndNothingElse) {
  const std::string ini = "; kept\r\n" + kUsual + "\n\n; end";
  ASSERT_TRUE(Start(ini));
  SaveSuccessfully();
  EXPECT_EQ(IniBytes(), ini);
  Choose("cmbMailServer", 1);
  Replace("txtDefaultDomain", "three");
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(IniBytes(), ini);  // nothing before Save
  messages.WillShow(kSaved);
  Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_FALSE(IsModified());
  EXPECT_EQ(IniBytes(), Replaced(ini, "DefaultDomain=two", "DefaultDomain=three"));
}

TEST_F(Window, MarksUnsavedChangesInItsTitle) {
  ASSERT_TRUE(Start(kUsual));
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Pellorin Configuration[*]"));
  Replace("txtSchedulerUsername", "x");
  EXPECT_TRUE(IsModified());
  Replace("txtSchedulerUsername", "sched");  // as it was
  EXPECT_FALSE(IsModified());
}

TEST_F(Window, BringsTheFirstFaultyPageToFront) {
  const std::string noSender = "\r\nMAIL:one\r\n- Sender's email must be provided\r\n\r\n";
  const std::string noPrimary = "\r\nSQL:DB1\r\n- Primary mail server must be provided\r\n\r\n";
  const std::string noScheduler =
      "\r\nADMIN:Pellorin\r\n- Scheduler Password must be provided\r\n- Scheduler Username must be "
      "provided\r\n\r\n";
  const std::string badMail = Replaced(kMailOne, "SenderEmail=a@one", "SenderEmail=");
  const std::string badSql = "[SQL:DB1]\r\nPrimaryMailServer=\r\n";
  const struct {
    std::string ini;
    int tab;
    std::string errors;
    const char* page;
  } cases[] = {{kMailOne + badSql, 0, noPrimary, "Sql Servers"},
               {badMail + badSql, 2, noPrimary + noSender, "Mail Servers"},
               {badSql + badMail, 2, noSender + noPrimary, "Sql Servers"},
               // The scheduler's account lies on no page: the one in front stays.
               {"[ADMIN:Pellorin]\r\n" + badMail, 1, noSender + noScheduler, "Sql Servers"}};
  for (const auto& row : cases) {
    const bool hasQueue = row.ini.starts_with("[ADMIN");
    if (hasQueue) folder.Write("Service/QUEUEDefinitions/Night.xml", kValidQueueXml);
    ASSERT_TRUE(Start(row.ini));
    Replace("txtSchedulerUsername", hasQueue ? "" : "x");
    ClickTab(row.tab);
    messages.WillShow(Errors(row.errors));
    Click("btnSave");
    EXPECT_EQ(Page(), row.page);
    EXPECT_EQ(IniBytes(), row.ini);
  }
}

TEST_F(Window, EditsTheSchedulersAccount) {
  ASSERT_TRUE(Start(kMailOne + kSql));  // without an administration section
  EXPECT_FALSE(IsModified());
  Replace("txtSchedulerUsername", "CORP\\job");
  Replace("txtSchedulerPassword", "p=;% w");
  SaveSuccessfully();
  EXPECT_EQ(Stored("ADMIN:Pellorin", "SchedulerUsername"), "CORP\\job");
  EXPECT_EQ(Stored("ADMIN:Pellorin", "SchedulerPassword"), "p=;% w");
  EXPECT_EQ(IniBytes().find("p=;%"), std::string::npos);
  ASSERT_TRUE(Start(""));
  EXPECT_EQ(Text("txtSchedulerUsername") + Text("txtSchedulerPassword"), "CORP\\jobp=;% w");
  ASSERT_TRUE(Start("[admin:PELLORIN]\r\nschedulerusername=x\r\n" + kMailOne));
  messages.WillShow(
      Critical("The setting \"SchedulerUsername\" cannot be changed: section admin:PELLORIN "
               "holds it in another letter case. Please correct its spelling in the file.\r\n" +
               IniPath() + "\r\n\r\nError Number: 457\r\nError Source: PellorinConfig.exe, Collection"));
  Click("txtSchedulerUsername");
  Type("a");
  EXPECT_EQ(Text("txtSchedulerUsername"), "");
}

TEST_F(Window, CancelDropsChangesOnlyWhenConfirmed) {
  ASSERT_TRUE(Start(kUsual));
  Click("btnCancel");  // without changes: no question, and the file is not read again
  Replace("txtSenderEmail", "typed@x");
  Replace("txtSchedulerUsername", "other");
  for (const Answer answer : {Answer::No, Answer::Cancel}) {
    messages.WillShow(kCancelQuestion, answer);
    Click("btnCancel");
    EXPECT_TRUE(IsModified());
    EXPECT_EQ(Text("txtSenderEmail") + Text("txtSchedulerUsername"), "typed@xother");
  }
  Add("gone");
  WriteIni(Replaced(kUsual, "a@one", "changed@one"));  // by somebody else
  ClickTab(1);
  messages.WillShow(kCancelQuestion, Answer::Yes);
  Click("btnCancel");
  EXPECT_FALSE(IsModified());
  EXPECT_EQ(Page(), "Mail Servers");
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one", "two"}));
  EXPECT_EQ(Text("txtSenderEmail") + Text("txtSchedulerUsername"), "changed@onesched");
  Replace("txtSenderEmail", "new@one");  // goes into the new document
  Choose("cmbMailServer", 1);
  Choose("cmbMailServer", 0);
  SaveSuccessfully();
  EXPECT_EQ(IniBytes(), Replaced(kUsual, "a@one", "new@one"));
}

TEST_F(Window, CancelBackToANewInstallationEmptiesEverything) {
  ASSERT_TRUE(Start(kUsual));
  WriteIni("");
  Replace("txtSchedulerUsername", "x");
  messages.WillShow(kCancelQuestion, Answer::Yes);
  Click("btnCancel");
  EXPECT_EQ(Text("txtSchedulerUsername") + Text("txtSenderEmail") + Text("txtRemoteServerName"), "");
  EXPECT_TRUE(Entries("cmbMailServer").empty() && Entries("cmbSQLServer").empty());
  EXPECT_FALSE(IsOn("btnSave") || IsOn("btnCancel") || IsOn("txtSenderEmail") || IsModified());
}

TEST_F(Window, AFailedReloadLeavesEmptyPagesThatCancelFillsAgain) {
  ASSERT_TRUE(Start(kUsual));
  Replace("txtSchedulerUsername", "x");
  WriteIni("[MAIL:cut]\r\nSendMeth");
  messages.WillShow(kCancelQuestion, Answer::Yes);
  messages.WillShowSome();
  Click("btnCancel");
  EXPECT_EQ(messages.Last().icon, MessageIcon::Critical);
  EXPECT_NE(messages.Last().text.find(IniPath()), std::string::npos);
  EXPECT_EQ(OnOf("btnSave cmbMailServer txtSenderEmail cmbSQLServer txtSchedulerUsername btnCancel "
                 "btnDeleteMailSettings btnAddNewMailServer"),
            "btnCancel btnAddNewMailServer");
  EXPECT_TRUE(Entries("cmbMailServer").empty());
  EXPECT_EQ(Text("txtSenderEmail") + Text("txtSchedulerUsername"), "");
  Press(Qt::Key_S, Qt::ControlModifier);
  messages.WillShow(Warning("PellorinConfig",
                            "The configuration could not be loaded. Please correct the file that was named "
                            "and press Cancel to load it again."));
  Click("btnAddNewMailServer");
  messages.WillShowSome();
  Click("btnCancel");  // still broken
  WriteIni(kUsual);
  Click("btnCancel");
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one", "two"}));
  EXPECT_EQ(Text("txtSenderEmail"), "a@one");
  EXPECT_TRUE(IsOn("btnSave") && IsOn("txtSchedulerUsername"));
  WriteIni("x");
  Replace("txtSchedulerUsername", "x");
  messages.WillShow(kCancelQuestion, Answer::Yes);
  messages.WillShowSome();
  Click("btnCancel");
  Click("btnExit");  // nothing is loaded: nothing to ask
  EXPECT_FALSE(window->isVisible());
}

TEST_F(Window, AsksBeforeItCloses) {
  using Box = std::pair<Message, Answer>;
  const std::string noServers = "[ADMIN:Pellorin]\r\nSchedulerUsername=sched\r\n";
  const auto mail = [](Answer answer) { return Box{Incomplete("Mail"), answer}; };
  const auto sql = [](Answer answer) { return Box{Incomplete("SQL"), answer}; };
  const auto save = [](Answer answer) { return Box{kSaveQuestion, answer}; };
  const Box invalid{Errors("\r\nMAIL:one\r\n- Sender's email must be provided\r\n\r\n"), Answer::Ok};
  const std::string badMail = Replaced(kMailOne, "SenderEmail=a@one", "SenderEmail=") + kSql + kAdmin;
  const auto failure = SaveFailure("ADMIN:Pellorin", "The file is read-only", "nothing", "ADMIN:Pellorin");
  const struct {
    const char* what;
    std::string ini;
    bool isEdited, isReadOnly;
    std::vector<Box> boxes;
    bool closes;
  } cases[] = {
      {"complete", kUsual, false, false, {}, true},
      {"no mail: no", noServers, false, false, {mail(Answer::No)}, false},
      {"no mail: cancel", noServers, true, false, {mail(Answer::Cancel)}, false},
      {"no mail: yes", noServers, false, false, {mail(Answer::Yes)}, true},
      {"no mail but SQL", kSql, false, false, {mail(Answer::Yes)}, true},
      {"no SQL: no", kMailOne, false, false, {sql(Answer::No)}, false},
      {"no SQL: cancel", kMailOne, false, false, {sql(Answer::Cancel)}, false},
      {"no SQL, changes", kMailOne, true, false, {sql(Answer::Yes), save(Answer::No)}, true},
      {"changes: cancel", kUsual, true, false, {save(Answer::Cancel)}, false},
      {"changes: no", kUsual, true, false, {save(Answer::No)}, true},
      {"changes: yes", kUsual, true, false, {save(Answer::Yes)}, true},
      {"invalid", badMail, true, false, {save(Answer::Yes), invalid}, false},
      {"failing", kUsual, true, true, {save(Answer::Yes), {failure, Answer::Ok}}, false},
  };
  for (const auto& row : cases)
    for (const bool byFrame : {false, true}) {
      SCOPED_TRACE(row.what);
      ::unlink(IniPath().c_str());
      ASSERT_TRUE(Start(row.ini));
      if (row.isEdited) Replace("txtSchedulerUsername", "typed");
      if (row.isReadOnly) MakeReadOnly();
      for (const auto& [message, answer] : row.boxes) messages.WillShow(message, answer);
      if (byFrame) {
        EXPECT_EQ(window->close(), row.closes);
      } else
        Click("btnExit");
      EXPECT_EQ(window->isVisible(), !row.closes);
      const bool saves = row.closes && row.isEdited && row.boxes.back().second == Answer::Yes;
      EXPECT_EQ(IniBytes(), saves ? Replaced(row.ini, "=sched", "=typed") : row.ini);
      if (!row.closes && row.isEdited) {
        EXPECT_TRUE(IsModified() && Text("txtSchedulerUsername") == "typed");
      }
      messages.ExpectNoMore();
    }
}

TEST_F(Window, OpensTheHelpOfThePage) {
  ASSERT_TRUE(Start(kUsual));
  const char* topics[] = {"MailServersTab", "SqlServersTab", "MailServersTab"};
  for (int tab = 0; tab < 3; ++tab)
    for (const bool byKey : {false, true}) {
      log.clear();
      ClickTab(tab);
      byKey ? Press(Qt::Key_F1) : Click("btnHelp");
      EXPECT_EQ(log, Names{program + "/Pellorin.chm|ConfigurationGuide.htm#" + topics[tab]});
    }
}

TEST_F(Window, AFailedSaveTellsWhatIsSavedAndKeepsTheRest) {
  ASSERT_TRUE(Start(kUsual));
  Replace("txtSenderEmail", "typed@x");
  Replace("txtSchedulerUsername", "typed");
  MakeReadOnly();
  messages.WillShow(
      SaveFailure("ADMIN:Pellorin", "The file is read-only", "nothing", "MAIL:one, ADMIN:Pellorin"));
  Click("btnSave");
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(Text("txtSenderEmail") + Text("txtSchedulerUsername"), "typed@xtyped");
  EXPECT_EQ(IniBytes(), kUsual);
  ASSERT_EQ(::chmod(IniPath().c_str(), 0644), 0);
  // Sections are saved from the last to the first; the first cannot be written at all.
  Paste("txtDefaultDomain", "\xCE\xA9.x");
  messages.WillShow(SaveFailure("MAIL:one",
                                "The value of DefaultDomain holds a character that Pellorin.ini cannot hold "
                                "(it is outside code page 1252).",
                                "ADMIN:Pellorin", "MAIL:one"));
  Click("btnSave");
  EXPECT_EQ(IniBytes(), Replaced(kUsual, "=sched", "=typed"));
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(Text("txtDefaultDomain"), "\xCE\xA9.x");
}

TEST_F(Window, EveryFileOperationOfASaveMayFail) {
  ASSERT_TRUE(Start(kUsual));
  int failures = 0;
  for (bool failed = true; failed; failures += failed) {
    SCOPED_TRACE(failures);
    for (const char* name : {"txtSenderEmail", "txtSchedulerUsername"}) Click(name), Type("x");
    const std::string typed = Texts("txtSenderEmail txtSchedulerUsername");
    files.FailAt(failures + 1);
    messages.WillShowSome();
    Click("btnSave");
    failed = files.HasFailed();
    files.FailAt(0);
    const Message& box = messages.Last();
    EXPECT_EQ(Texts("txtSenderEmail txtSchedulerUsername"), typed);
    EXPECT_EQ(box.title, IsModified() ? "PellorinConfig" : "Settings");
    if (IsModified())
      EXPECT_TRUE(box.icon == MessageIcon::Critical && box.text.find(IniPath()) != std::string::npos &&
                  box.text.find("\r\nNot saved: MAIL:one") != std::string::npos)
          << box.text;
    else
      EXPECT_EQ(Stored("MAIL:one", "SenderEmail") + "|" + Stored("ADMIN:Pellorin", "SchedulerUsername"),
                typed);
  }
  EXPECT_GT(failures, 10);
  EXPECT_FALSE(IsModified());
}

}  // namespace
}  // namespace pellorin::test
