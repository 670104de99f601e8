// Save, Cancel, Help and closing, and what is left when saving or loading fails.
#include <QLineEdit>

#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

const Message kCancelQuestion =
    Question("Cancel Changes", "Are you sure you want to cancel? All changes will be lost.");
const std::string kBadMail = Replaced(kMailOne, "SenderEmail=a@one", "SenderEmail=");
const std::string kNoSender = "MAIL:one\r\n- Sender's email must be provided";
const Message kSaveQuestion = Question("Save Changes", "Would you like to save changes?");

Message Incomplete(const std::string& servers) {
  return Question("Incomplete " + servers + " Server Configuration",
                  "You do not have any " + servers +
                      " Servers configured. Pellorin will not be able to function in this configuration. Do "
                      "you really want to exit?");
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

TEST_F(Window, LeadsToTheFirstFault) {
  const std::string bare = "[MAIL:bare]\r\nSendMethod=2\r\nAuthenticationMethod=2\r\nUsername=x\r\n";
  const std::string sql =
      "[SQL:A]\r\nConnectionType=Trusted\r\nDefaultFormat=Text\r\nPrimaryMailServer=one\r\n";
  const std::string noPrimary = "[SQL:B]\r\nConnectionType=Sql\r\nSqlUsername=u\r\n";
  const std::string third = Replaced(sql, "SQL:A", "SQL:C");
  const struct {
    std::string ini;
    Names queues;
    std::string led;  // page, what the three pages show, focus
  } cases[] = {
      {kMailOne + bare + sql, {}, "Mail Servers|bare|A||txtSenderEmail"},
      {kBadMail + bare + sql, {}, "Mail Servers|one|A||txtSenderEmail"},
      {kMailOne + Replaced(kMailTwo, "DOM\\", "") + sql, {}, "Mail Servers|two|A||txtMailDomain"},
      {kMailOne + sql + noPrimary + third, {}, "Sql Servers|one|B||cmbPrimaryMailServer"},
      {kMailOne + sql, {"<queue/>"}, "Mail Servers|one|A|0|txtSchedulerPassword"},
      {kMailOne + sql + kAdmin + "SchedulerPassword=<\\_\r\n",
       {"<queue/>", "<queue frequency=\"D\" occurstype=\"every\" occursevery=\"x\" starttime=\"y\"/>"},
       "Queues|one|A|1|txtOccursEvery"}};
  const auto saveInVain = [this] {
    messages.WillShowSome();
    Press("Ctrl+S");
    EXPECT_EQ(messages.Last().title, "Validation Errors");
    return Page() + "|" + Text("cmbMailServer cmbSQLServer cmbQueues") + "|" + FocusName();
  };
  for (const auto& row : cases) {
    for (std::size_t index = 0; index < row.queues.size(); ++index)
      WriteQueue(std::to_string(index), row.queues[index]);
    ASSERT_TRUE(Start(row.ini));
    Replace("txtSchedulerUsername", "x");
    EXPECT_EQ(saveInVain(), row.led);
    EXPECT_EQ(IniBytes(), row.ini);
  }
  ASSERT_TRUE(Start(cases[3].ini));  // with the queues of the last one
  ClickTab(1);
  Choose("cmbSQLServer", 2);
  Click("btnClearprimaryServer");
  ClickTab(0);
  EXPECT_EQ(saveInVain(), "Sql Servers|one|C|0|cmbPrimaryMailServer") << "the shown one is faulty itself";
}

TEST_F(Window, AnEmptyPageSaysWhatToPress) {
  ASSERT_TRUE(Start(kAdmin));
  for (const auto& [tab, hint, text] :
       {std::tuple(0, "hintEmptyMail", "No mail server yet. Press Add to enter the first one."),
        {1, "hintEmptySql", "No SQL Server yet. Press Add to install sp_sendPLN in an instance."},
        {2, "hintEmptyQueue", "No queue yet. Press Add to create the first one."}}) {
    ClickTab(tab);
    EXPECT_EQ(Text(hint), text);
    EXPECT_TRUE(Find(hint).isVisible()) << hint;
    const QPoint middle = Find(hint).parentWidget()->visibleRegion().boundingRect().center();
    EXPECT_LT((Find(hint).geometry().center() - middle).manhattanLength(), 3) << hint;
  }
  ClickTab(0);
  const auto tip = [this] { return Find("btnTestMailServer").toolTip().toStdString(); };
  const std::string usualTip = "Send a test e-mail through this mail server";
  EXPECT_EQ(tip(), usualTip + "\nThere is no mail server yet: press Add.");
  Add("first");
  EXPECT_FALSE(Find("hintEmptyMail").isVisible());
  EXPECT_EQ(tip(), usualTip);
  Delete("btnDeleteMailSettings", "settings for server first");
  EXPECT_TRUE(Find("hintEmptyMail").isVisible());
}

TEST_F(Window, EditsTheSchedulersAccount) {
  ASSERT_TRUE(Start(kMailOne + kSql));  // without an administration section
  Replace("txtSchedulerUsername", "CORP\\job");
  Replace("txtSchedulerPassword", "p=;% w");
  SaveSuccessfully();
  EXPECT_EQ(Stored("ADMIN:Pellorin", "SchedulerUsername SchedulerPassword"), "CORP\\job|p=;% w");
  ASSERT_TRUE(Start(""));
  EXPECT_EQ(Text("txtSchedulerUsername txtSchedulerPassword"), "CORP\\job|p=;% w");
  for (const char* name : {"txtMailPassword", "txtSchedulerPassword", "txtSqlPassword"})
    EXPECT_EQ(Find<QLineEdit>(name).echoMode(), QLineEdit::Password);
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
    EXPECT_EQ(Text("txtSenderEmail txtSchedulerUsername"), "typed@x|other");
  }
  WriteIni(Replaced(kUsual, "a@one", "changed@one"));  // by somebody else
  ClickTab(1);
  messages.WillShow(kCancelQuestion, Answer::Yes);
  Click("btnCancel");
  EXPECT_FALSE(IsModified());
  EXPECT_EQ(Page(), "Mail Servers");
  EXPECT_EQ(Text("txtSenderEmail txtSchedulerUsername"), "changed@one|sched");
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
  EXPECT_EQ(Text("txtSenderEmail txtSchedulerUsername"), "|");
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
      {kBadMail + kSql + kAdmin, true, {{kSaveQuestion, Yes}, {Invalid({kNoSender}), Ok}}, false},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(&row - cases);
    ASSERT_TRUE(Start(row.ini));
    if (row.isEdited) Replace("txtSchedulerUsername", "typed");
    for (const auto& [message, answer] : row.boxes) messages.WillShow(message, answer);
    window->close();
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
  Replace("txtSchedulerUsername", "typed");
  Paste("txtDefaultDomain", "\xCE\xA9.x");
  const auto failure = [this](const std::string& saved) {  // from the last section to the first
    return SaveFailure("MAIL:one",
                       "The value of DefaultDomain holds a character that Pellorin.ini cannot hold (it is "
                       "outside code page 1252).",
                       saved, "MAIL:one", IniPath());
  };
  Save(failure("ADMIN:Pellorin"));
  messages.WillShow(kSaveQuestion, Answer::Yes);
  messages.WillShow(failure("nothing"));
  Click("btnExit");
  EXPECT_TRUE(IsModified() && window->isVisible());
  EXPECT_EQ(Text("txtDefaultDomain"), "\xCE\xA9.x");
  EXPECT_EQ(IniBytes(), Replaced(kUsual, "=sched", "=typed"));
}

}  // namespace
}  // namespace pellorin::test
