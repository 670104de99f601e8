#include "ui/pages/EmptyPageHint.h"

#include <QEvent>

namespace pellorin {

EmptyPageHint::EmptyPageHint(QWidget& page) : QLabel(&page) {
  constexpr int kMargin = 18;
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
  setForegroundRole(QPalette::Text);
  setMargin(kMargin);
  page.installEventFilter(this);
  hide();
}

void EmptyPageHint::Say(const QString& text) {
  setText(text);
  setVisible(!text.isEmpty());
  MoveToMiddle();
  raise();
}

bool EmptyPageHint::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) MoveToMiddle();
  return QLabel::eventFilter(watched, event);
}

void EmptyPageHint::MoveToMiddle() {
  adjustSize();
  QRect place = rect();
  place.moveCenter(parentWidget()->rect().center());
  move(place.topLeft());
}

}  // namespace pellorin
