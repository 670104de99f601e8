// The real boxes as a user sees and answers them, and the window by keyboard.
#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "tests/ui/WindowFixture.h"
#include "ui/QtUserMessages.h"

namespace pellorin::test {
namespace {

// Runs `act` on the box that the next call opens; a box that stays open is closed and fails the test.
template <typename Dialog, typename Act>
void WithBox(QObject& context, Act act) {
  QTimer::singleShot(0, &context, [act] {
    auto* box = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    if (box == nullptr) {
      ADD_FAILURE() << "no such box is open";
      if (QWidget* other = QApplication::activeModalWidget()) other->close();
      return;
    }
    act(*box);
    if (!box->isVisible()) return;
    ADD_FAILURE() << "the box is still open";
    box->done(0);
  });
}

TEST(QtUserMessages, ShowsABoxToTheLetterAndAnswersIt) {
  const struct {
    MessageButtons buttons;
    std::optional<Answer> defaultButton;
    Names captions;
    const char* defaultCaption;
    Answer byReturn, byEscape, byFrame;
  } cases[] = {
      {MessageButtons::Ok, {}, {"OK"}, "OK", Answer::Ok, Answer::Ok, Answer::Ok},
      {MessageButtons::YesNo, {}, {"Yes", "No"}, "Yes", Answer::Yes, Answer::No, Answer::No},
      {MessageButtons::YesNo, Answer::No, {"Yes", "No"}, "No", Answer::No, Answer::No, Answer::No},
      {MessageButtons::YesNoCancel,
       {},
       {"Yes", "No", "Cancel"},
       "Yes",
       Answer::Yes,
       Answer::Cancel,
       Answer::Cancel},
  };
  const std::string text = "Server <b>x</b> & &amp; &y\r\n\r\n- line";
  for (const auto& row : cases)
    for (int way = 0; way < 4; ++way) {
      QWidget owner;
      QtUserMessages messages;
      messages.SetOwner(&owner);
      const Message message{.text = text,
                            .title = "A title",
                            .icon = MessageIcon::Critical,
                            .buttons = row.buttons,
                            .defaultButton = row.defaultButton};
      WithBox<QMessageBox>(owner, [&](QMessageBox& box) {
        EXPECT_EQ(box.text().toStdString(), text);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle(), QStringLiteral("A title"));
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        EXPECT_EQ(box.parentWidget(), &owner);
        EXPECT_TRUE(box.isModal());
        Names captions;
        for (const auto button : {QMessageBox::Ok, QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel})
          if (const QAbstractButton* shown = box.button(button))
            captions.push_back(shown->text().remove(QLatin1Char('&')).toStdString());
        EXPECT_EQ(captions, row.captions);
        EXPECT_EQ(box.buttons().size(), static_cast<int>(row.captions.size()));
        ASSERT_NE(box.defaultButton(), nullptr);
        EXPECT_EQ(box.defaultButton()->text().remove(QLatin1Char('&')).toStdString(), row.defaultCaption);
        if (way == 0)
          QTest::keyClick(&box, Qt::Key_Return);
        else if (way == 1)
          QTest::keyClick(&box, Qt::Key_Escape);
        else if (way == 2)
          box.close();
        else
          QTest::mouseClick(box.defaultButton(), Qt::LeftButton);
      });
      const Answer answer = messages.Show(message);
      EXPECT_EQ(answer, way == 1   ? row.byEscape
                        : way == 2 ? row.byFrame
                                   : row.byReturn)
          << row.defaultCaption << way;
    }
  QtUserMessages messages;
  QObject context;
  for (const auto& [icon, shown] : {std::pair{MessageIcon::None, QMessageBox::NoIcon},
                                    {MessageIcon::Information, QMessageBox::Information},
                                    {MessageIcon::Exclamation, QMessageBox::Warning}}) {
    WithBox<QMessageBox>(context, [shown = shown](QMessageBox& box) {
      EXPECT_EQ(box.icon(), shown);
      EXPECT_EQ(box.windowTitle(), QStringLiteral("PellorinConfig"));
      box.close();
    });
    messages.Show({.text = "x", .icon = icon});
  }
}

TEST(QtUserMessages, ALongTextStaysOnTheScreen) {
  QtUserMessages messages;
  QObject context;
  std::string text;
  for (int line = 0; line < 2000; ++line) text += "- Sender's email must be provided\r\n";
  for (const std::string& longText : {text, std::string(20000, 'n')}) {
    WithBox<QMessageBox>(context, [&](QMessageBox& box) {
      EXPECT_EQ(box.text().toStdString(), longText);
      const QRect screen = box.screen()->availableGeometry();
      EXPECT_LE(box.height(), screen.height());
      EXPECT_LE(box.width(), screen.width());
      const QWidget& button = *box.defaultButton();
      EXPECT_TRUE(box.rect().contains(QRect(button.mapTo(&box, QPoint()), button.size())));
      box.close();
    });
    messages.Show({.text = longText});
  }
}

TEST(QtUserMessages, AsksForAText) {
  QtUserMessages messages;
  QObject context;
  for (const auto& [keys, end, answer] : {std::tuple{" a <b> ", Qt::Key_Return, " a <b> "},
                                          {"typed", Qt::Key_Escape, ""},
                                          {"", Qt::Key_Return, ""}}) {
    WithBox<QInputDialog>(context, [keys = keys, end = end](QInputDialog& box) {
      EXPECT_EQ(box.windowTitle(), QStringLiteral("New Mail Server"));
      EXPECT_EQ(box.labelText(), QStringLiteral("Please enter the name of the new mail server"));
      EXPECT_EQ(box.textValue(), QString());
      QTest::keyClicks(box.focusWidget(), QString::fromUtf8(keys));
      QTest::keyClick(&box, end);
    });
    EXPECT_EQ(messages.AskForText("New Mail Server", "Please enter the name of the new mail server"), answer);
  }
}

class Keyboard : public WindowFixture {
 protected:
  // The controls that Tab reaches, from the tab strip round to it again.
  Names Walk(bool back) const {
    QWidget* strip = Find<QTabWidget>("tabMain").tabBar();
    strip->setFocus();
    Names reached;
    do {
      back ? Press(Qt::Key_Backtab, Qt::ShiftModifier) : Press(Qt::Key_Tab);
      if (QApplication::focusWidget() != strip) reached.push_back(FocusName());
    } while (QApplication::focusWidget() != strip && reached.size() < 60);
    return reached;
  }
};

TEST_F(Keyboard, TabReachesEveryFieldInReadingOrder) {
  const Names common{
      "txtSchedulerUsername", "txtSchedulerPassword", "btnSave", "btnCancel", "btnExit", "btnHelp"};
  const Names head{"cmbMailServer",  "btnAddNewMailServer", "btnDeleteMailSettings", "btnTestMailServer",
                   "txtSenderEmail", "txtDefaultDomain",    "txtConnectionTimeout"};
  const Names local{"optLocalMailServer", "txtLocalPickupFolder"};
  const Names remote{"optRemoteMailServer", "txtRemoteServerName", "txtRemoteServerPort"};
  // Of options that exclude each other Tab reaches the chosen one; the arrow keys lead to the others.
  const struct {
    int tab;
    const char *send, *login;
    Names connection, authentication;
  } cases[] = {
      {0, "optRemoteMailServer", "optAnonymous", remote, {"optAnonymous"}},
      {0, "optLocalMailServer", "optBasic", local, {"optBasic", "txtMailUsername", "txtMailPassword"}},
      {0,
       "optRemoteMailServer",
       "optNTLM",
       remote,
       {"optNTLM", "txtMailUsername", "txtMailDomain", "txtMailPassword"}},
  };
  for (const auto& row : cases)
    for (const bool reloaded : {false, true}) {
      SCOPED_TRACE(std::string(row.send) + row.login);
      ASSERT_TRUE(Start(Replaced(kMailOne, "AuthenticationMethod",
                                 "LocalMailPickupFolder=/\r\nUsername=D\\b\r\nAuthenticationMethod") +
                        kSql));
      Click(row.send);
      Click(row.login);
      if (reloaded) {  // shown anew, after other options had the focus
        SaveSuccessfully();
        Click("optLocalMailServer");
        Click("optRemoteMailServer");
        Click("optAnonymous");
        Click("optNTLM");
        Replace("txtDefaultDomain", "x");
        messages.WillShowSome(Answer::Yes);
        Click("btnCancel");
      }
      Names expected = head;
      for (const Names* part : {&row.connection, &row.authentication, &common})
        expected.insert(expected.end(), part->begin(), part->end());
      EXPECT_EQ(Walk(false), expected);
      EXPECT_EQ(Walk(true), Names(expected.rbegin(), expected.rend()));
    }
  const std::pair<int, const char*> others[] = {{1, "cmbSQLServer"}, {2, "cmbQueues"}};
  folder.Write("Service/QUEUEDefinitions/Night.xml", kQueueXml);
  ASSERT_TRUE(Start(kUsual));
  for (const auto& [tab, list] : others) {
    ClickTab(tab);
    Names expected{list};
    expected.insert(expected.end(), common.begin(), common.end());
    EXPECT_EQ(Walk(false), expected);
  }
}

TEST_F(Keyboard, ArrowKeysChooseAmongOptions) {
  ASSERT_TRUE(Start(kUsual));
  Find("optAnonymous").setFocus();
  for (const auto& [key, chosen] :
       {std::pair{Qt::Key_Right, "optBasic"}, {Qt::Key_Right, "optNTLM"}, {Qt::Key_Left, "optBasic"}}) {
    Press(key);
    EXPECT_TRUE(Find<QAbstractButton>(chosen).isChecked()) << chosen;
    Find(chosen).setFocus();
  }
  EXPECT_TRUE(IsOn("txtMailUsername") && !IsOn("txtMailDomain"));
}

TEST_F(Keyboard, EveryFieldSaysWhatItIs) {
  ASSERT_TRUE(Start(kUsual));
  std::map<const QWidget*, std::string> labelled;
  for (const QLabel* label : window->findChildren<QLabel*>())
    if (label->buddy() != nullptr) labelled[label->buddy()] = label->text().toStdString();
  int fields = 0;
  for (const QWidget* control : window->findChildren<QWidget*>()) {
    const std::string name = control->objectName().toStdString();
    if (name.starts_with("qt_") || name.starts_with("Scroll")) continue;  // parts of Qt's own controls
    const bool isField = qobject_cast<const QLineEdit*>(control) != nullptr ||
                         qobject_cast<const QComboBox*>(control) != nullptr;
    const auto* button = qobject_cast<const QAbstractButton*>(control);
    if (!isField && (button == nullptr || name.empty())) continue;
    if (isField) {
      EXPECT_EQ(labelled.count(control), 1u) << name << " has no label";
    }
    if (isField) {
      EXPECT_FALSE(control->accessibleName().isEmpty()) << name;
    }
    if (button != nullptr) {
      EXPECT_FALSE(button->text().isEmpty()) << name;
    }
    EXPECT_FALSE(control->toolTip().isEmpty()) << name;
    fields += isField;
  }
  EXPECT_GE(fields, 14);
  for (const char* name : {"txtMailPassword", "txtSchedulerPassword"})
    EXPECT_EQ(Find<QLineEdit>(name).echoMode(), QLineEdit::Password);
}

TEST_F(Keyboard, TheWheelChangesNothingWithoutFocus) {
  ASSERT_TRUE(Start(kUsual));
  auto& list = Find<QComboBox>("cmbMailServer");
  for (const bool hasFocus : {false, true}) {
    Find(hasFocus ? "cmbMailServer" : "txtSenderEmail").setFocus();
    const QPointF place(5, 5);
    QWheelEvent turn(place, list.mapToGlobal(place), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &turn);
    EXPECT_EQ(Text("cmbMailServer"), hasFocus ? "two" : "one");
    EXPECT_EQ(Text("txtRemoteServerName"), hasFocus ? "two.example" : "one.example");
  }
}

}  // namespace
}  // namespace pellorin::test
