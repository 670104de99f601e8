// The real boxes as a user sees and answers them.
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "tests/support/RecordingMessages.h"
#include "tests/ui/WindowUser.h"
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
    const char* captions;  // the default button's first
    Answer byReturn, byEscape;
  } cases[] = {
      {None, QMessageBox::NoIcon, MessageButtons::Ok, {}, "OK", Ok, Ok},
      {Information, QMessageBox::Information, MessageButtons::YesNo, {}, "&Yes &No", Yes, No},
      {Exclamation, QMessageBox::Warning, MessageButtons::YesNo, No, "&No &Yes", No, No},
      {Critical, QMessageBox::Critical, MessageButtons::YesNoCancel, {}, "&Yes &No Cancel", Yes, Cancel},
  };
  const std::string text = "Server <b>x</b> & &amp; &y\r\n\r\n- line";
  QWidget owner;
  QtUserMessages messages;
  messages.SetOwner(&owner);
  for (const auto& row : cases)
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
      WithBox<QMessageBox>(owner, [&](QMessageBox& box) {
        EXPECT_EQ(box.text().toStdString(), text);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle(), QStringLiteral("A title"));
        EXPECT_EQ(box.icon(), row.shownIcon);
        EXPECT_EQ(box.parentWidget(), &owner);
        Names captions;
        for (const auto button : {QMessageBox::Ok, QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel})
          if (const auto* shown = box.button(button))
            captions.insert(shown == box.defaultButton() ? captions.begin() : captions.end(),
                            shown->text().toStdString());
        EXPECT_EQ(captions, Words(row.captions));
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
    EXPECT_EQ(
        messages.AskForText("New Mail Server", "Please enter the name of the new mail server", {"someone"}),
        answer);
  }
}

TEST(QtUserMessages, SuggestAnEarlierTextOnceItIsBegun) {
  QtUserMessages messages;
  QObject context;
  WithBox<QInputDialog>(context, [](QInputDialog& box) {
    QTest::keyClick(box.focusWidget(), Qt::Key_S);
    QWidget* offered = QApplication::activePopupWidget();
    ASSERT_NE(offered, nullptr);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return}) QTest::keyClick(offered, key);
  });
  EXPECT_EQ(messages.AskForText("Email Address", "", {"else@example.com", "Someone@example.com"}),
            "Someone@example.com");
  WithBox<QInputDialog>(context, [](QInputDialog& box) {
    QTest::keyClicks(box.focusWidget(), QStringLiteral("a@b"));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr)
        << "what is typed whole needs no suggestion over OK";
    box.reject();
  });
  messages.AskForText("Email Address", "", {"a@b"});
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

}  // namespace
}  // namespace pellorin::test
