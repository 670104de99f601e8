// The real boxes as a user sees and answers them, and the window by keyboard.
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "tests/ui/WindowFixture.h"
#include "ui/boxes/BusyWindow.h"
#include "ui/boxes/QtUserMessages.h"

namespace pellorin::test {
namespace {

// Runs `act` on the box that the next call opens; a box that stays open is closed and fails the test.
template <typename Dialog, typename Act>
void WithBox(QObject& context, Act act) {
  QTimer::singleShot(0, &context, [act] {
    QWidget* open = QApplication::activeModalWidget();
    auto* box = qobject_cast<Dialog*>(open);
    EXPECT_NE(box, nullptr);
    if (box != nullptr) act(*box);
    EXPECT_FALSE(open != nullptr && open->isVisible()) << "a box is still open";
    if (open != nullptr) open->close();
  });
}

TEST(QtUserMessages, ShowsABoxToTheLetterAndAnswersIt) {
  using enum Answer;
  using enum MessageIcon;
  const struct {
    MessageIcon icon;
    QMessageBox::Icon shownIcon;
    MessageButtons buttons;
    std::optional<Answer> defaultButton;
    const char *captions, *defaultCaption;
    Answer byReturn, byEscape;
  } cases[] = {
      {None, QMessageBox::NoIcon, MessageButtons::Ok, {}, "OK", "OK", Ok, Ok},
      {Information, QMessageBox::Information, MessageButtons::YesNo, {}, "&Yes &No", "&Yes", Yes, No},
      {Exclamation, QMessageBox::Warning, MessageButtons::YesNo, No, "&Yes &No", "&No", No, No},
      {Critical,
       QMessageBox::Critical,
       MessageButtons::YesNoCancel,
       {},
       "&Yes &No Cancel",
       "&Yes",
       Yes,
       Cancel},
  };
  const std::string text = "Server <b>x</b> & &amp; &y\r\n\r\n- line";
  for (const auto& row : cases)
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
      QWidget owner;
      QtUserMessages messages;
      messages.SetOwner(&owner);
      WithBox<QMessageBox>(owner, [&](QMessageBox& box) {
        EXPECT_EQ(box.text().toStdString(), text);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle(), QStringLiteral("A title"));
        EXPECT_EQ(box.icon(), row.shownIcon);
        EXPECT_EQ(box.parentWidget(), &owner);
        EXPECT_TRUE(box.isModal());
        Names captions;
        for (const auto button : {QMessageBox::Ok, QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel})
          if (const auto* shown = box.button(button)) captions.push_back(shown->text().toStdString());
        EXPECT_EQ(captions, Words(row.captions));
        EXPECT_EQ(box.buttons().size(), static_cast<int>(captions.size()));
        ASSERT_NE(box.defaultButton(), nullptr);
        EXPECT_EQ(box.defaultButton()->text().toStdString(), row.defaultCaption);
        QTest::keyClick(&box, key);
      });
      const Message message{text, "A title", row.icon, row.buttons, row.defaultButton};
      EXPECT_EQ(messages.Show(message), key == Qt::Key_Return ? row.byReturn : row.byEscape);
    }
}

TEST(QtUserMessages, AsksForAText) {
  QtUserMessages messages;
  QObject context;
  for (const auto& [pasted, end, answer] :
       {std::tuple{" a <b> \n", Qt::Key_Return, " a <b> "}, {"left", Qt::Key_Escape, ""}}) {
    QApplication::clipboard()->setText(QString::fromUtf8(pasted));
    WithBox<QInputDialog>(context, [end = end](QInputDialog& box) {
      EXPECT_EQ(box.windowTitle(), QStringLiteral("New Mail Server"));
      EXPECT_EQ(box.labelText(), QStringLiteral("Please enter the name of the new mail server"));
      EXPECT_EQ(box.textValue(), QString());
      QTest::keyClick(box.focusWidget(), Qt::Key_V, Qt::ControlModifier);
      QTest::keyClick(&box, end);
    });
    EXPECT_EQ(messages.AskForText("New Mail Server", "Please enter the name of the new mail server"), answer);
  }
}

TEST(QtUserMessages, LieOverTheBusyDialogWithTheNormalPointer) {
  QWidget owner;
  QtUserMessages messages;
  messages.SetOwner(&owner);
  QDialog dialog;
  dialog.open();
  {
    const BusyWindow busy(dialog);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    EXPECT_FALSE(dialog.isEnabled());
    WithBox<QMessageBox>(owner, [&](QMessageBox& box) {
      EXPECT_EQ(box.parentWidget(), &dialog);
      EXPECT_TRUE(box.isEnabled());
      EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
      QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(messages.Show(Plain("text")), Answer::Ok);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  }
  EXPECT_TRUE(dialog.isEnabled() && QApplication::overrideCursor() == nullptr);
}

class Keyboard : public WindowFixture {};

TEST_F(Keyboard, TabReachesEveryFieldInReadingOrder) {
  const std::string common = " txtSchedulerUsername txtSchedulerPassword btnSave btnCancel btnExit btnHelp";
  const std::string head =
      "cmbMailServer btnAddNewMailServer btnDeleteMailSettings btnTestMailServer txtSenderEmail "
      "txtDefaultDomain txtConnectionTimeout ";
  const std::string local = "optLocalMailServer txtLocalPickupFolder ";
  const std::string remote = "optRemoteMailServer txtRemoteServerName txtRemoteServerPort ";
  // Of options that exclude each other Tab reaches the chosen one; the arrow keys lead to the others.
  const std::tuple<int, const char*, std::string> cases[] = {
      {0, "", head + remote + "optAnonymous"},
      {0, "optLocalMailServer optBasic", head + local + "optBasic txtMailUsername txtMailPassword"},
      {0, "optRemoteMailServer optNTLM",
       head + remote + "optNTLM txtMailUsername txtMailDomain txtMailPassword"},
      {1, "optTrusted",
       "cmbSQLServer btnAddNewSqlServer btnDeleteSqlSettings btnTestSqlServer optTrusted txtTimeout "
       "btnConfigure cmbPrimaryMailServer btnClearprimaryServer btnRefreshPrimaryServer "
       "cmbSecondaryMailServer btnClearSecondaryServer btnRefreshSecondaryServer optText chkEncodeHTML "
       "txtLineWidth cmbStylesheet btnClearStylesheet btnRefreshStylesheets chkEmailWhenEmpty "
       "chkForceSetUser chkAnsiAttachment txtProhibitedTokens txtRedirectAllEmailTo cmbExceptionMode"},
      {2, "",
       "cmbQueues btnAddQueue btnDeleteQueue btnTestQueue txtQueueTitle optDaily txtEvery optOccursOnce "
       "txtOccursOnce txtStartDate optNoEndDate optQueueNone"}};
  WriteQueue("Night", kQueueXml);
  ASSERT_TRUE(Start(kUsual));
  for (const auto& [tab, options, fields] : cases) {
    ClickTab(tab);
    Click(options);
    QWidget* strip = Find<QTabWidget>("tabMain").tabBar();  // where the walk starts and ends
    strip->setFocus();
    Names reached{""};
    for (Press("Tab"); QApplication::focusWidget() != strip && reached.size() < 60; Press("Tab"))
      if (FocusName() != reached.back()) reached.push_back(FocusName());  // a date has several stops
    EXPECT_EQ(Joined(reached, " "), " " + fields + common);
  }
}

}  // namespace
}  // namespace pellorin::test
