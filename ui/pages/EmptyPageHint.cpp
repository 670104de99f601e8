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
  if (event->type() == QEvent::ParentChange) parentWidget()->parentWidget()->installEventFilter(this);
  if (event->type() == QEvent::Resize || event->type() == QEvent::Move) MoveToMiddle();
  return QLabel::eventFilter(watched, event);
}

void EmptyPageHint::MoveToMiddle() {
  adjustSize();
  const QWidget& page = *parentWidget();
  QRect seen = page.rect();
  if (const QWidget* part = page.parentWidget()) seen &= part->rect().translated(-page.pos());
  QRect place = rect();
  place.moveCenter(seen.center());
  move(place.topLeft());
}

}  // namespace pellorin
