#include "ui/controls/SingleLineInput.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <algorithm>

namespace pellorin {
namespace {

bool IsLineEnd(QChar letter) {
  constexpr QChar kLineEnds[] = {u'\n', u'\v', u'\f', u'\r', u'\u0085', u'\u2028', u'\u2029'};
  return std::find(std::begin(kLineEnds), std::end(kLineEnds), letter) != std::end(kLineEnds);
}

bool IsControl(QChar letter) {
  return letter.category() == QChar::Other_Control;
}

// Ends the current Undo step. The text box has no call for that, but moving the cursor does it.
void EndUndoStep(QLineEdit& box) {
  if (box.hasSelectedText()) return;  // replacing it begins a new step anyway
  const int place = box.cursorPosition();
  box.setCursorPosition(place == 0 ? 1 : 0);
  box.setCursorPosition(place);
}

void Paste(QLineEdit& box, QClipboard::Mode source) {
  if (box.isReadOnly()) return;
  const QString text = QGuiApplication::clipboard()->text(source);
  if (text.isEmpty()) return;
  EndUndoStep(box);
  box.insert(WithoutLineEnds(text));
  EndUndoStep(box);
}

// Filters the events of a text box, and of the list or picker around it, which passes keys on to it.
class InputFilter : public QObject {
 public:
  InputFilter(QLineEdit& box, QWidget& owner) : QObject(&box), box_(box) {
    box.installEventFilter(this);
    if (&owner != &box) owner.installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::KeyPress:
        return TakeKey(static_cast<QKeyEvent&>(*event));
      case QEvent::MouseButtonRelease:
        return watched == &box_ && TakeClick(static_cast<QMouseEvent&>(*event));
      case QEvent::Drop:
        return watched == &box_ && TakeDrop(static_cast<QDropEvent&>(*event));
      case QEvent::InputMethod:
        CleanCommit(static_cast<QInputMethodEvent&>(*event));
        return false;
      case QEvent::ChildPolished:
        if (auto* menu = qobject_cast<QMenu*>(static_cast<QChildEvent*>(event)->child())) TakeMenu(*menu);
        return false;
      default:
        return false;
    }
  }

 private:
  bool TakeKey(const QKeyEvent& key) {
    if (!key.matches(QKeySequence::Paste)) return false;
    const bool isSelection =
        key.key() == Qt::Key_Insert && key.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    Paste(box_, isSelection ? QClipboard::Selection : QClipboard::Clipboard);
    return true;
  }

  // The middle button pastes the current selection, on systems that have one.
  bool TakeClick(const QMouseEvent& click) {
    if (click.button() != Qt::MiddleButton || !QGuiApplication::clipboard()->supportsSelection())
      return false;
    box_.deselect();
    Paste(box_, QClipboard::Selection);
    return true;
  }

  // The text box takes the clean text as if that text had been dropped.
  bool TakeDrop(QDropEvent& drop) {
    const QString clean = WithoutLineEnds(drop.mimeData()->text());
    if (clean == drop.mimeData()->text()) return false;
    QMimeData data;
    data.setText(clean);
    EndUndoStep(box_);
    QDropEvent cleanDrop(drop.position(), drop.possibleActions(), &data, drop.buttons(), drop.modifiers());
    cleanDrop.setDropAction(drop.dropAction());
    box_.event(&cleanDrop);
    drop.setDropAction(cleanDrop.dropAction());
    drop.setAccepted(cleanDrop.isAccepted());
    return true;
  }

  static void CleanCommit(QInputMethodEvent& event) {
    event.setCommitString(WithoutLineEnds(event.commitString()), event.replacementStart(),
                          event.replacementLength());
  }

  // Each context menu is a new child of the text box.
  void TakeMenu(QMenu& menu) {
    for (QAction* action : menu.actions())
      if (QObject::disconnect(action, SIGNAL(triggered()), &box_, SLOT(paste())))
        QObject::connect(action, &QAction::triggered, this, [this] { Paste(box_, QClipboard::Clipboard); });
  }

  QLineEdit& box_;
};

// The widget that gets the keys of the box.
QWidget& OwnerOf(QLineEdit& box) {
  QWidget* parent = box.parentWidget();
  const bool isPart =
      qobject_cast<QComboBox*>(parent) != nullptr || qobject_cast<QAbstractSpinBox*>(parent) != nullptr;
  return isPart ? *parent : box;
}

}  // namespace

QString WithoutLineEnds(const QString& text) {
  QString line = text;
  line.removeIf(IsLineEnd);
  const auto first = std::find_if_not(line.begin(), line.end(), IsControl);
  const auto last = std::find_if_not(line.rbegin(), std::make_reverse_iterator(first), IsControl);
  return QString(first, static_cast<qsizetype>(last.base() - first));
}

void KeepInputToOneLine(QWidget& window) {
  for (QLineEdit* box : window.findChildren<QLineEdit*>()) new InputFilter(*box, OwnerOf(*box));
}

}  // namespace pellorin
