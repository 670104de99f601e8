#include "ui/controls/InputHabits.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QToolTip>
#include <algorithm>
#include <limits>

#include "ui/controls/PasswordPeek.h"
#include "ui/controls/SingleLineInput.h"

namespace pellorin {
namespace {

class WheelFilter : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* control = qobject_cast<QWidget*>(watched);
    if (event->type() != QEvent::Wheel || control == nullptr || control->hasFocus()) return false;
    event->ignore();
    return true;
  }
};

// A long text shows its beginning again once the user has left its box.
class BackToStart : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::FocusOut) return false;
    const Qt::FocusReason reason = static_cast<const QFocusEvent&>(*event).reason();
    const bool comesBack = reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
    if (!comesBack) static_cast<QLineEdit*>(watched)->setCursorPosition(0);
    return false;
  }
};

void ShowBeginnings(QWidget& window) {
  auto* filter = new BackToStart(&window);
  for (QLineEdit* text : window.findChildren<QLineEdit*>())
    if (qobject_cast<QAbstractSpinBox*>(text->parentWidget()) == nullptr) text->installEventFilter(filter);
}

void AllowAnyLength(QWidget& window) {
  for (QLineEdit* text : window.findChildren<QLineEdit*>())
    text->setMaxLength(std::numeric_limits<int>::max());
}

void IgnoreWheelWithoutFocus(QWidget& window) {
  auto* filter = new WheelFilter(&window);
  const auto watch = [filter](QWidget* control) {
    control->setFocusPolicy(Qt::StrongFocus);
    control->installEventFilter(filter);
  };
  for (QComboBox* list : window.findChildren<QComboBox*>()) watch(list);
  for (QAbstractSpinBox* picker : window.findChildren<QAbstractSpinBox*>()) watch(picker);
}

void LeadTabToChosenOptions(QWidget& window) {
  for (QRadioButton* option : window.findChildren<QRadioButton*>())
    QObject::connect(option, &QRadioButton::toggled, option, [option] {
      const auto group =
          option->parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
      const bool isAnyChosen = std::ranges::any_of(group, &QRadioButton::isChecked);
      for (QRadioButton* each : group)
        each->setFocusPolicy(each->isChecked() || !isAnyChosen ? Qt::StrongFocus : Qt::ClickFocus);
    });
}

// Shows the whole text as a tip where a list has no room for it.
class LongTextTip : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return false;
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const auto* list = qobject_cast<QComboBox*>(watched);
    const auto* lines = qobject_cast<QAbstractItemView*>(watched->parent());
    const QString text = list != nullptr ? list->currentText() : lines->indexAt(help.pos()).data().toString();
    const int room = list != nullptr ? list->width() - list->height()  // the arrow is as wide as high
                                     : lines->viewport()->width();
    const QWidget& shown = list != nullptr ? static_cast<const QWidget&>(*list) : *lines;
    if (shown.fontMetrics().horizontalAdvance(text) < room) return false;
    QToolTip::showText(help.globalPos(), text + QLatin1Char('\n') + shown.toolTip());
    return true;
  }
};

void ShowLongTexts(QWidget& window) {
  constexpr int kRows = 20;
  auto* tips = new LongTextTip(&window);
  for (QComboBox* list : window.findChildren<QComboBox*>()) {
    list->setMaxVisibleItems(kRows);
    list->installEventFilter(tips);
    if (list->isEditable()) list->lineEdit()->setAccessibleName(list->accessibleName());
  }
  for (QListWidget* lines : window.findChildren<QListWidget*>()) lines->viewport()->installEventFilter(tips);
}

void LetPasswordsBeRead(QWidget& window) {
  for (QLineEdit* box : window.findChildren<QLineEdit*>())
    if (box->echoMode() == QLineEdit::Password) AddPasswordPeek(*box);
}

}  // namespace

void ApplyInputHabits(QWidget& window) {
  IgnoreWheelWithoutFocus(window);
  AllowAnyLength(window);
  ShowBeginnings(window);
  KeepInputToOneLine(window);
  LeadTabToChosenOptions(window);
  LetPasswordsBeRead(window);
  ShowLongTexts(window);
}

}  // namespace pellorin
