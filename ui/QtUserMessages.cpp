#include "ui/QtUserMessages.h"

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>
#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace pellorin {
namespace {

using ButtonRow = std::vector<std::pair<Answer, QMessageBox::StandardButton>>;

const ButtonRow& ButtonsOf(MessageButtons buttons) {
  static const ButtonRow kOk{{Answer::Ok, QMessageBox::Ok}};
  static const ButtonRow kYesNo{{Answer::Yes, QMessageBox::Yes}, {Answer::No, QMessageBox::No}};
  static const ButtonRow kYesNoCancel{
      {Answer::Yes, QMessageBox::Yes}, {Answer::No, QMessageBox::No}, {Answer::Cancel, QMessageBox::Cancel}};
  switch (buttons) {
    case MessageButtons::YesNo:
      return kYesNo;
    case MessageButtons::YesNoCancel:
      return kYesNoCancel;
    case MessageButtons::Ok:
      break;
  }
  return kOk;
}

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Information:
      return QMessageBox::Information;
    case MessageIcon::Exclamation:
      return QMessageBox::Warning;
    case MessageIcon::Critical:
      return QMessageBox::Critical;
    case MessageIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

// A text that would not fit the screen scrolls, and breaks inside its words where it must: the buttons stay
// within reach and nothing is cut off.
void FitScreen(QMessageBox& box) {
  constexpr int kTextWidth = 600;
  auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  if (label == nullptr) return;
  label->setWordWrap(true);
  const int room = box.screen()->availableGeometry().height() * 2 / 3;
  if (label->heightForWidth(kTextWidth) <= room && label->minimumSizeHint().width() <= kTextWidth) return;

  auto* text = new QPlainTextEdit(label->text(), &box);
  text->setReadOnly(true);
  text->setTabChangesFocus(true);
  text->setFrameShape(QFrame::NoFrame);
  text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  text->viewport()->setAutoFillBackground(false);
  const QRect needed = text->fontMetrics().boundingRect(
      QRect(0, 0, kTextWidth, 0), Qt::TextWordWrap | Qt::TextWrapAnywhere, label->text());
  const int surroundings = 3 * text->fontMetrics().height();
  text->setFixedSize(kTextWidth + surroundings, std::min(room, needed.height() + surroundings));
  const std::unique_ptr<QLayoutItem> replaced(box.layout()->replaceWidget(label, text));
  label->hide();
}

// A box is no part of the work that the wait pointer stands for.
class NormalPointer {
 public:
  NormalPointer() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
  ~NormalPointer() { QGuiApplication::restoreOverrideCursor(); }
  NormalPointer(const NormalPointer&) = delete;
  NormalPointer& operator=(const NormalPointer&) = delete;
};

}  // namespace

// The dialog in front, so that no box ever lies behind it.
QWidget* QtUserMessages::Owner() const {
  QWidget* dialog = QApplication::activeModalWidget();
  return dialog != nullptr ? dialog : owner_.data();
}

Answer QtUserMessages::Show(const Message& message) {
  const NormalPointer pointer;
  QMessageBox box(Owner());
  box.setWindowTitle(QString::fromStdString(message.title));
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  box.setText(QString::fromStdString(message.text));
  box.setIcon(IconOf(message.icon));
  const ButtonRow& row = ButtonsOf(message.buttons);
  for (const auto& [answer, button] : row) {
    QPushButton* shown = box.addButton(button);
    if (answer == message.defaultButton.value_or(row.front().first)) box.setDefaultButton(shown);
  }
  FitScreen(box);
  const int pressed = box.exec();
  for (const auto& [answer, button] : row)
    if (pressed == button) return answer;
  return row.back().first;  // closed without a button: the most cautious answer
}

std::string QtUserMessages::AskForText(const std::string& title, const std::string& prompt) {
  bool accepted = false;
  const QString text =
      QInputDialog::getText(Owner(), QString::fromStdString(title), QString::fromStdString(prompt),
                            QLineEdit::Normal, {}, &accepted);
  return accepted ? text.toStdString() : std::string();
}

}  // namespace pellorin
