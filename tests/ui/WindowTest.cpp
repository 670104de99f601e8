// Save, Cancel, Help and closing, and what is left when saving or loading fails.
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QWheelEvent>

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

TEST_F(Window, WhatIsPastedOrDroppedLosesItsLineEnds) {
  const QString dirty = QStringLiteral("\t\none\r\ntwo\tthree \u2028\n");
  QApplication::clipboard()->setText(dirty);
  QMimeData dragged;
  dragged.setText(dirty);
  ASSERT_TRUE(Start(kUsual));
  Click("optBasic");
  for (const std::string name : {"txtDefaultDomain", "txtMailPassword"})
    for (const std::string way : {"key", "menu", "drop", "input method"}) {
      SCOPED_TRACE(name + " by " + way);
      auto& box = Find<QLineEdit>(name);
      Replace(name, "ab ");
      int edits = 0;
      const auto counting = QObject::connect(&box, &QLineEdit::textChanged, [&edits] { ++edits; });
      if (way == "key") Press("Ctrl+V");
      if (way == "menu") {
        QContextMenuEvent wanted(QContextMenuEvent::Mouse, {}, box.mapToGlobal(QPoint()));
        QApplication::sendEvent(&box, &wanted);
        QTest::keyClick(QApplication::activePopupWidget(), 'p');
        window->activateWindow();
      } else if (way == "drop") {
        const QPoint place(box.width() - 5, 5);
        QDragEnterEvent enter(place, Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QApplication::sendEvent(&box, &enter);
        QDropEvent drop(place, Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QApplication::sendEvent(&box, &drop);
      } else if (way == "input method") {
        QInputMethodEvent commit;
        commit.setCommitString(dirty);
        QApplication::sendEvent(&box, &commit);
      }
      EXPECT_EQ(Text(name), "ab onetwo\tthree ");
      EXPECT_EQ(edits, 1);
      QObject::disconnect(counting);
      Press("Ctrl+Z");
      if (way != "input method" && name != "txtMailPassword") {  // which lose what was typed before, too
        EXPECT_EQ(Text(name), "ab ");
      }
    }
}

TEST_F(Window, NumericBoxesRefuseTheKeyThatMakesNoNumber) {
  // Typed into the cleared box, left in it, and how many keys are refused.
  const std::tuple<const char*, const char*, int> typed[] = {
      {"-1", "1", 1}, {"", "", 0}, {"1,000", "1,000", 0}, {" 4a65", "465", 2}};
  ASSERT_TRUE(Start(kUsual));
  for (const auto& [tab, box, text] :
       {std::tuple(0, "txtRemoteServerPort",
                   "Remote Server Port must be a number. The most commom value is 25."),
        {0, "txtConnectionTimeout", "Connection Timeout must be a number."},
        {1, "txtTimeout", "Timeout must be a number."},
        {1, "txtLineWidth", "Line width must be a number."}}) {
    ClickTab(tab);
    const Message refusal = Plain(text, "Data Type Error");
    for (const auto& [keys, left, refusals] : typed) {
      for (int count = 0; count < refusals; ++count) messages.WillShow(refusal);
      Replace(box, keys);
      messages.ExpectNoMore();
      EXPECT_EQ(Text(box), left) << keys << " was typed into " << box;
      EXPECT_EQ(FocusName(), box);
    }
    messages.WillShow(refusal);
    Paste(box, "1 minute");
    EXPECT_EQ(Text(box), "465");
  }
  SaveSuccessfully();
  EXPECT_EQ(Stored("MAIL:one", "RemoteServerPort ConnectionTimeout"), "465|465");
  EXPECT_EQ(Stored("SQL:DB1", "Timeout Width"), "465|465");
  Replace("txtLineWidth", "");
  SaveSuccessfully();
  EXPECT_EQ(Stored("SQL:DB1", "Width"), "");
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
    EXPECT_LT((Find(hint).geometry().center() - Find(hint).parentWidget()->rect().center()).manhattanLength(),
              3);
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

TEST_F(Window, KeysChooseThePageWhereverTheFocusIs) {
  ASSERT_TRUE(Start(kUsual));
  Find("btnSave").setFocus();
  for (const auto& [keys, page] : {std::pair("Alt+3", "Queues"),
                                   {"Alt+2", "Sql Servers"},
                                   {"Ctrl+Tab", "Queues"},
                                   {"Ctrl+Tab", "Mail Servers"},
                                   {"Ctrl+Shift+Tab", "Queues"},
                                   {"Alt+1", "Mail Servers"}}) {
    Press(keys);
    EXPECT_EQ(Page(), page) << "after " << keys;
  }
}

TEST_F(Window, APasswordCanBeReadWhileItsButtonIsHeld) {
  ASSERT_TRUE(Start(kUsual));
  const auto& box = Find<QLineEdit>("txtSchedulerPassword");
  const QPoint eye = box.mapTo(window.get(), QPoint(box.width() - 12, box.height() / 2));
  QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, eye);
  EXPECT_EQ(box.echoMode(), QLineEdit::Normal);
  QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, eye);
  EXPECT_EQ(box.echoMode(), QLineEdit::Password);
}

// Whether the second control is below the first or to its right, or so are the groups that hold them.
bool FollowsInReading(const QWidget* first, const QWidget* second) {
  const QWidget* group = first->parentWidget();
  while (!group->isAncestorOf(second)) group = group->parentWidget();
  const auto placeInGroup = [group](const QWidget* part) {
    while (part->parentWidget() != group) part = part->parentWidget();
    return part->geometry();
  };
  const QRect before = placeInGroup(first), after = placeInGroup(second);
  return after.top() >= before.bottom() || after.left() >= before.right();
}

TEST_F(Window, TabReachesEveryFieldInReadingOrder) {
  WriteQueue("Night", kQueueXml);
  ASSERT_TRUE(Start(kUsual));
  // Each row switches other fields on.
  for (const auto& [tab, options] : {std::pair(0, "optAnonymous"),
                                     {0, "optLocalMailServer optBasic"},
                                     {0, "optRemoteMailServer optNTLM"},
                                     {1, "optTrusted optText"},
                                     {1, "optSqlNative"},
                                     {2, "optDaily"},
                                     {2, "optWeekly optOccursEvery optEndDate optQueueFilter"}}) {
    SCOPED_TRACE(options);
    ClickTab(tab);
    Click(options);
    QWidget* strip = Find<QTabWidget>("tabMain").tabBar();  // where the walk starts and ends
    strip->setFocus();
    Names reached;
    for (Press("Tab"); QApplication::focusWidget() != strip && reached.size() < 99; Press("Tab")) {
      if (!reached.empty() && FocusName() == reached.back()) continue;  // a date has several stops
      if (!reached.empty()) {
        EXPECT_TRUE(FollowsInReading(&Find(reached.back()), QApplication::focusWidget()))
            << "from " << reached.back() << " Tab leads back to " << FocusName();
      }
      reached.push_back(FocusName());
    }
    for (const QWidget* control : window->findChildren<QWidget*>()) {
      const bool takesTab = (control->focusPolicy() & Qt::TabFocus) != 0 && control->focusProxy() == nullptr;
      const std::string name = control->objectName().toStdString();
      if (!takesTab || !control->isVisible() || !control->isEnabled() || name.starts_with("qt_")) continue;
      EXPECT_NE(std::ranges::find(reached, name), reached.end()) << "Tab never reaches " << name;
    }
  }
}

TEST_F(Window, TheWheelChangesOnlyTheFieldThatHasTheFocus) {
  WriteQueue("Q1", kDailyQueue);
  WriteQueue("Q2", kDailyQueue);
  ASSERT_TRUE(Start(kUsual));
  ClickTab(2);
  const auto turnWheelOver = [this](const std::string& name) {
    QWidget& field = Find(name);
    const QPointF place = field.rect().center();
    QWheelEvent turn(place, field.mapToGlobal(place), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&field, &turn);
  };
  for (const char* name : {"cmbQueues", "txtStartDate"}) {
    const std::string before = Text(name);
    Find("txtQueueTitle").setFocus();
    turnWheelOver(name);
    EXPECT_EQ(Text(name), before) << name << " has no focus";
    Find(name).setFocus();
    turnWheelOver(name);
    EXPECT_NE(Text(name), before) << name << " has the focus";
  }
}

TEST_F(Window, TextBoxesOfEveryWindowHoldTextsOfAnyLength) {
  const std::string text(40000, 'x');  // Qt's own limit is 32,767
  WriteQueue("Q", Replaced(Replaced(kDailyQueue, "\"t\"", "\"" + text + "\""), "\"none\"",
                           "\"filter\" queuebydefaultfilter=\"Subject=" + text + "\""));
  ASSERT_TRUE(Start(kUsual));
  ClickTab(2);
  EXPECT_EQ(Text("txtQueueTitle").size(), text.size());
  const auto pasteInto = [&](const std::string& name) {
    InDialog([&, name](QDialog& dialog) {
      const DialogUser user(dialog);
      if (name == "txtSqlUsername") user.Click("optSqlNative");
      user.Paste(name, text);
      EXPECT_EQ(user.Text(name).size(), text.size()) << name;
      dialog.reject();
    });
  };
  pasteInto("txtValue");
  Click("btnAddQueueFilter");
  ClickTab(1);
  pasteInto("txtSqlUsername");
  Click("btnConfigure");
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
