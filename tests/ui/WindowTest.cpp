// Save, Cancel, Help and closing, and what is left when saving or loading fails.
#include <sys/stat.h>

#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

const Message kCancelQuestion =
    Question("Cancel Changes", "Are you sure you want to cancel? All changes will be lost.");
const std::string kBadMail = Replaced(kMailOne, "SenderEmail=a@one", "SenderEmail=");
const std::string kNoSender = "\r\nMAIL:one\r\n- Sender's email must be provided\r\n\r\n";
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

class Window : public WindowFixture {};

TEST_F(Window, SavesWhatChangedAndNothingElse) {
  const std::string ini = "; kept\r\n" + kUsual + "\n\n; end";
  ASSERT_TRUE(Start(ini));
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Pellorin Configuration[*]"));
  SaveSuccessfully();
  EXPECT_EQ(IniBytes(), ini);
  Choose("cmbMailServer", 1);
  Replace("txtDefaultDomain", "three");
  EXPECT_TRUE(IsModified());
  Replace("txtDefaultDomain", "two");  // as it was
  EXPECT_FALSE(IsModified());
  Replace("txtDefaultDomain", "three");
  EXPECT_EQ(IniBytes(), ini);  // nothing before Save
  SaveSuccessfully();
  EXPECT_EQ(IniBytes(), Replaced(ini, "DefaultDomain=two", "DefaultDomain=three"));
  Replace("txtDefaultDomain", "two");
  messages.WillShow({.text = "Settings Saved", .title = "Settings", .icon = MessageIcon::Information});
  Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(IniBytes(), ini);
}

TEST_F(Window, BringsTheFirstFaultyPageToFront) {
  const std::string noPrimary = "\r\nSQL:DB1\r\n- Primary mail server must be provided\r\n\r\n";
  const std::string badSql = "[SQL:DB1]\r\nPrimaryMailServer=\r\n";
  const struct {
    std::string ini;
    int tab;
    std::string errors;
    const char* page;
  } cases[] = {{kMailOne + badSql, 0, noPrimary, "Sql Servers"},
               {kBadMail + badSql, 2, noPrimary + kNoSender, "Mail Servers"},
               {badSql + kBadMail, 2, kNoSender + noPrimary, "Sql Servers"}};
  for (const auto& row : cases) {
    ASSERT_TRUE(Start(row.ini));
    Replace("txtSchedulerUsername", "x");
    ClickTab(row.tab);
    Save(Errors(row.errors));
    EXPECT_EQ(Page(), row.page);
    EXPECT_EQ(IniBytes(), row.ini);
  }
}

TEST_F(Window, EditsTheSchedulersAccount) {
  ASSERT_TRUE(Start(kMailOne + kSql));  // without an administration section
  Replace("txtSchedulerUsername", "CORP\\job");
  Replace("txtSchedulerPassword", "p=;% w");
  SaveSuccessfully();
  EXPECT_EQ(Stored("ADMIN:Pellorin", "SchedulerUsername"), "CORP\\job");
  EXPECT_EQ(Stored("ADMIN:Pellorin", "SchedulerPassword"), "p=;% w");
  EXPECT_EQ(IniBytes().find("p=;%"), std::string::npos);
  ASSERT_TRUE(Start(""));
  EXPECT_EQ(Text("txtSchedulerUsername") + Text("txtSchedulerPassword"), "CORP\\jobp=;% w");
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
  WriteIni(Replaced(kUsual, "a@one", "changed@one"));  // by somebody else
  ClickTab(1);
  messages.WillShow(kCancelQuestion, Answer::Yes);
  Click("btnCancel");
  EXPECT_FALSE(IsModified());
  EXPECT_EQ(Page(), "Mail Servers");
  EXPECT_EQ(Text("txtSenderEmail") + Text("txtSchedulerUsername"), "changed@onesched");
  Replace("txtSenderEmail", "new@one");  // goes into the new document
  SaveSuccessfully();
  EXPECT_EQ(IniBytes(), Replaced(kUsual, "a@one", "new@one"));
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
  messages.WillShow(Warning("PellorinConfig",
                            "The configuration could not be loaded. Please correct the file that was named "
                            "and press Cancel to load it again."));
  Click("btnAddNewMailServer");
  WriteIni(kUsual);
  Click("btnCancel");
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one", "two"}));
  EXPECT_EQ(Text("txtSenderEmail"), "a@one");
  EXPECT_TRUE(IsOn("btnSave") && IsOn("txtSchedulerUsername"));
}

TEST_F(Window, AsksBeforeItCloses) {
  using enum Answer;
  const Message noMail = Incomplete("Mail");
  const Message noSql = Incomplete("SQL");
  const struct {
    std::string ini;
    bool isEdited;
    std::vector<std::pair<Message, Answer>> boxes;
    bool closes;
  } cases[] = {
      {kUsual, false, {}, true},
      {kAdmin, false, {{noMail, No}}, false},
      {kAdmin, true, {{noMail, Cancel}}, false},
      {kAdmin, false, {{noMail, Yes}}, true},
      {kMailOne, false, {{noSql, No}}, false},
      {kMailOne, true, {{noSql, Yes}, {kSaveQuestion, No}}, true},
      {kUsual, true, {{kSaveQuestion, Cancel}}, false},
      {kUsual, true, {{kSaveQuestion, No}}, true},
      {kUsual, true, {{kSaveQuestion, Yes}}, true},
      {kBadMail + kSql + kAdmin, true, {{kSaveQuestion, Yes}, {Errors(kNoSender), Ok}}, false},
  };
  for (const auto& row : cases)
    for (const bool byFrame : {false, true}) {
      SCOPED_TRACE(&row - cases);
      ASSERT_TRUE(Start(row.ini));
      if (row.isEdited) Replace("txtSchedulerUsername", "typed");
      for (const auto& [message, answer] : row.boxes) messages.WillShow(message, answer);
      if (byFrame)
        window->close();
      else
        Click("btnExit");
      EXPECT_EQ(window->isVisible(), !row.closes);
      const bool saves = row.closes && row.isEdited && row.boxes.back().second == Yes;
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
  ASSERT_EQ(::chmod(IniPath().c_str(), 0444), 0);
  const Message failure =
      SaveFailure("ADMIN:Pellorin", "The file is read-only", "nothing", "MAIL:one, ADMIN:Pellorin");
  Save(failure);
  messages.WillShow(kSaveQuestion, Answer::Yes);
  messages.WillShow(failure);
  Click("btnExit");
  EXPECT_TRUE(IsModified() && window->isVisible());
  EXPECT_EQ(Text("txtSenderEmail") + Text("txtSchedulerUsername"), "typed@xtyped");
  EXPECT_EQ(IniBytes(), kUsual);
  ASSERT_EQ(::chmod(IniPath().c_str(), 0644), 0);
  // Sections are saved from the last to the first; the first cannot be written at all.
  Paste("txtDefaultDomain", "\xCE\xA9.x");
  Save(SaveFailure("MAIL:one",
                   "The value of DefaultDomain holds a character that Pellorin.ini cannot hold "
                   "(it is outside code page 1252).",
                   "ADMIN:Pellorin", "MAIL:one"));
  EXPECT_EQ(IniBytes(), Replaced(kUsual, "=sched", "=typed"));
  EXPECT_TRUE(IsModified() && Text("txtDefaultDomain") == "\xCE\xA9.x");
}

}  // namespace
}  // namespace pellorin::test
