// The real boxes as a user sees and answers them, and the window by keyboard.
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "tests/ui/WindowFixture.h"
#include "ui/QtUserMessages.h"

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
      {Information, QMessageBox::Information, MessageButtons::YesNo, {}, "Yes No", "Yes", Yes, No},
      {Exclamation, QMessageBox::Warning, MessageButtons::YesNo, No, "Yes No", "No", No, No},
      {Critical, QMessageBox::Critical, MessageButtons::YesNoCancel, {}, "Yes No Cancel", "Yes", Yes, Cancel},
  };
  const std::string text = "Server <b>x</b> & &amp; &y\r\n\r\n- line";
  const auto caption = [](const QAbstractButton& button) {
    return button.text().remove(QLatin1Char('&')).toStdString();
  };
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
          if (const QAbstractButton* shown = box.button(button)) captions.push_back(caption(*shown));
        EXPECT_EQ(captions, Words(row.captions));
        EXPECT_EQ(box.buttons().size(), static_cast<int>(captions.size()));
        ASSERT_NE(box.defaultButton(), nullptr);
        EXPECT_EQ(caption(*box.defaultButton()), row.defaultCaption);
        QTest::keyClick(&box, key);
      });
      const Message message{.text = text,
                            .title = "A title",
                            .icon = row.icon,
                            .buttons = row.buttons,
                            .defaultButton = row.defaultButton};
      EXPECT_EQ(messages.Show(message), key == Qt::Key_Return ? row.byReturn : row.byEscape);
    }
}

TEST(QtUserMessages, AsksForAText) {
  QtUserMessages messages;
  QObject context;
  for (const auto& [keys, end, answer] :
       {std::tuple{" a <b> ", Qt::Key_Return, " a <b> "}, {"typed", Qt::Key_Escape, ""}}) {
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

class Keyboard : public WindowFixture {};

TEST_F(Keyboard, TabReachesEveryFieldInReadingOrder) {
  const std::string common = " txtSchedulerUsername txtSchedulerPassword btnSave btnCancel btnExit btnHelp";
  const std::string head =
      "cmbMailServer btnAddNewMailServer btnDeleteMailSettings btnTestMailServer txtSenderEmail "
      "txtDefaultDomain txtConnectionTimeout ";
  const std::string local = "optLocalMailServer txtLocalPickupFolder ";
  const std::string remote = "optRemoteMailServer txtRemoteServerName txtRemoteServerPort ";
  // Of options that exclude each other Tab reaches the chosen one; the arrow keys lead to the others.
  const struct {
    int tab;
    const char *send, *login;
    std::string fields;
  } cases[] = {
      {0, "optRemoteMailServer", "optAnonymous", head + remote + "optAnonymous"},
      {0, "optLocalMailServer", "optBasic", head + local + "optBasic txtMailUsername txtMailPassword"},
      {0, "optRemoteMailServer", "optNTLM",
       head + remote + "optNTLM txtMailUsername txtMailDomain txtMailPassword"},
      {1, "optRemoteMailServer", "optAnonymous",
       "cmbSQLServer btnAddNewSqlServer btnDeleteSqlSettings btnTestSqlServer optTrusted txtTimeout "
       "btnConfigure "
       "cmbPrimaryMailServer btnClearprimaryServer btnRefreshPrimaryServer cmbSecondaryMailServer "
       "btnClearSecondaryServer btnRefreshSecondaryServer optText chkEncodeHTML txtLineWidth cmbStylesheet "
       "btnClearStylesheet btnRefreshStylesheets chkEmailWhenEmpty chkForceSetUser chkAnsiAttachment "
       "txtProhibitedTokens txtRedirectAllEmailTo cmbExceptionMode"},
      {2, "optRemoteMailServer", "optAnonymous",
       "cmbQueues btnAddQueue btnDeleteQueue btnTestQueue txtQueueTitle optDaily txtEvery optOccursOnce "
       "txtOccursOnce txtStartDate optNoEndDate optQueueNone"},
  };
  folder.Write("Service/QUEUEDefinitions/Night.xml", kQueueXml);
  for (const auto& row : cases) {
    ASSERT_TRUE(Start(Replaced(kUsual, "[SQL:DB1]\r\n", "[SQL:DB1]\r\nConnectionType=Trusted\r\n")));
    Click(row.send);
    Click(row.login);
    ClickTab(row.tab);
    QWidget* strip = Find<QTabWidget>("tabMain").tabBar();  // where the walk starts and ends
    strip->setFocus();
    Names reached;
    for (Press(Qt::Key_Tab); QApplication::focusWidget() != strip && reached.size() < 60; Press(Qt::Key_Tab))
      if (reached.empty() || FocusName() != reached.back())
        reached.push_back(FocusName());  // parts of a date
    EXPECT_EQ(reached, Words(row.fields + common));
  }
}

}  // namespace
}  // namespace pellorin::test
