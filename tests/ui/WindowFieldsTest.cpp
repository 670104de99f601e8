// What keys, the clipboard, the wheel and a mouse button do in the window's fields, and where Tab leads.
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QToolTip>
#include <QWheelEvent>

#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

class WindowFields : public WindowFixture {};

TEST_F(WindowFields, WhatIsPastedOrDroppedLosesItsLineEnds) {
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

TEST_F(WindowFields, NumericBoxesRefuseTheKeyThatMakesNoNumber) {
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

TEST_F(WindowFields, ArrowsCountWholeNumbers) {
  WriteQueue("Q1", kDailyQueue);
  ASSERT_TRUE(Start(kUsual));
  for (const auto& [tab, box, lowest] : {std::tuple(0, "txtConnectionTimeout", "0"), {2, "txtEvery", "1"}}) {
    ClickTab(tab);
    Replace(box, "2");
    Press("Up Up Down");
    EXPECT_EQ(Text(box), "3") << box;
    Press("Down Down Down Down");
    EXPECT_EQ(Text(box), lowest) << box;
    Press("Ctrl+A Del Up");
    EXPECT_EQ(Text(box), lowest) << "from an empty " << box;
    const QWidget& field = Find(box);
    const QPoint upperArrow(field.width() - 8, field.height() / 4);
    ClickAt(field.mapTo(window.get(), upperArrow));
    ClickAt(field.mapTo(window.get(), upperArrow));
    EXPECT_EQ(Text(box), std::to_string(std::stoi(lowest) + 2)) << box;
  }
  Replace("txtEvery", "two");
  Press("Up");
  EXPECT_EQ(Text("txtEvery"), "two");
}

TEST_F(WindowFields, KeysChooseThePageWhereverTheFocusIs) {
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

TEST_F(WindowFields, APasswordCanBeReadWhileItsButtonIsHeld) {
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

TEST_F(WindowFields, TabReachesEveryFieldInReadingOrder) {
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

TEST_F(WindowFields, TheWheelChangesOnlyTheFieldThatHasTheFocus) {
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

TEST_F(WindowFields, TextBoxesOfEveryWindowHoldTextsOfAnyLength) {
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

TEST_F(WindowFields, LongTextsShowTheirBeginningOnceLeft) {
  ASSERT_TRUE(Start(kUsual));
  const auto& box = Find<QLineEdit>("txtSenderEmail");
  Replace("txtSenderEmail", std::string(80, 'a'));
  EXPECT_EQ(box.cursorPosition(), 80);
  Press("Tab");
  EXPECT_EQ(box.cursorPosition(), 0);
  Choose("cmbMailServer", 0);
  EXPECT_EQ(box.cursorPosition(), 0) << "filled again";
}

TEST_F(WindowFields, NamesTooLongForTheirListAreInItsTip) {
  const std::string longName(120, 'n');
  WriteQueue("Q", kDailyQueue);
  ASSERT_TRUE(Start(kUsual + Replaced(kMailOne, "MAIL:one", "MAIL:" + longName) +
                    Replaced(kSql, "SQL:DB1", "SQL:" + longName)));
  const auto tipOver = [this](QWidget& field) {
    const QPoint place(10, 10);
    QToolTip::hideText();
    QHelpEvent hover(QEvent::ToolTip, place, field.mapToGlobal(place));
    QApplication::sendEvent(&field, &hover);
    return QToolTip::text().toStdString();
  };
  ClickTab(1);
  const std::string usual = Find("cmbPrimaryMailServer").toolTip().toStdString();
  EXPECT_EQ(tipOver(Find("cmbPrimaryMailServer")), usual);
  Choose("cmbPrimaryMailServer", 2);
  EXPECT_EQ(tipOver(Find("cmbPrimaryMailServer")), longName + "\n" + usual);
  ClickTab(2);
  Click("optQueueAll");
  delete Find<QListWidget>("lstQueueApplServers").takeItem(0);
  EXPECT_TRUE(tipOver(*Find<QListWidget>("lstQueueApplServers").viewport()).starts_with(longName));
}

}  // namespace
}  // namespace pellorin::test
