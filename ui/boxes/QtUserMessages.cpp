#include "ui/boxes/QtUserMessages.h"

#include <QApplication>
#include <QCompleter>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStringListModel>
#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "ui/controls/SingleLineInput.h"

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

// A box is answered with the normal pointer, even while the window below is busy.
class NormalPointer {
 public:
  NormalPointer() : isSet_(QApplication::overrideCursor() != nullptr) {
    if (isSet_) QApplication::setOverrideCursor(Qt::ArrowCursor);
  }
  ~NormalPointer() {
    if (isSet_) QApplication::restoreOverrideCursor();
  }
  NormalPointer(const NormalPointer&) = delete;
  NormalPointer& operator=(const NormalPointer&) = delete;

 private:
  bool isSet_;
};

// The window over which a box must open. A modal window would hide and block any other.
QWidget* InFront(QWidget* owner) {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : owner;
}

// A text too large for the screen scrolls, and breaks inside words where it must, so that the buttons stay
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

void SuggestIn(QInputDialog& dialog, const std::vector<std::string>& suggestions) {
  QStringList texts;
  for (const std::string& text : suggestions) texts.append(QString::fromStdString(text));
  auto* offered = new QStringListModel(texts, &dialog);
  auto* completer = new QCompleter(offered, &dialog);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  auto* line = dialog.findChild<QLineEdit*>();
  line->setCompleter(completer);
  // The open list would cover the buttons and keep Return to itself. What has been typed whole is not
  // offered.
  QObject::connect(line, &QLineEdit::textEdited, offered, [offered, texts](const QString& typed) {
    QStringList others = texts;
    others.removeAll(typed);
    offered->setStringList(others);
  });
  QObject::connect(line, &QLineEdit::returnPressed, &dialog, &QDialog::accept);
}

}  // namespace

Answer QtUserMessages::Show(const Message& message) {
  const NormalPointer pointer;
  QMessageBox box(InFront(owner_));
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

std::string QtUserMessages::AskForText(const std::string& title, const std::string& prompt,
                                       const std::vector<std::string>& suggestions) {
  const NormalPointer pointer;
  QInputDialog dialog(InFront(owner_));
  dialog.setWindowTitle(QString::fromStdString(title));
  dialog.setLabelText(QString::fromStdString(prompt));
  dialog.setInputMode(QInputDialog::TextInput);  // makes the text box
  KeepInputToOneLine(dialog);
  SuggestIn(dialog, suggestions);
  return dialog.exec() == QDialog::Accepted ? dialog.textValue().toStdString() : std::string();
}

}  // namespace pellorin
