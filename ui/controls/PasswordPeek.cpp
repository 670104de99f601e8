#include "ui/controls/PasswordPeek.h"

#include <QAction>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>

namespace pellorin {
namespace {

// Lids and pupil, in the colour of texts.
QIcon Eye(const QPalette& colours) {
  constexpr int kSize = 32;
  QPixmap picture(kSize, kSize);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor ink = colours.color(QPalette::Text);
  painter.setPen(QPen(ink, 2.5));
  QPainterPath lids(QPointF(3, 16));
  lids.quadTo(16, 2, 29, 16);
  lids.quadTo(16, 30, 3, 16);
  painter.drawPath(lids);
  painter.setBrush(ink);
  painter.drawEllipse(QPointF(16, 16), 3.5, 3.5);
  return QIcon(picture);
}

}  // namespace

void AddPasswordPeek(QLineEdit& box) {
  const QAction* peek = box.addAction(Eye(box.palette()), QLineEdit::TrailingPosition);
  for (QToolButton* button : box.findChildren<QToolButton*>()) {
    if (button->defaultAction() != peek) continue;
    button->setToolTip(QStringLiteral("Hold down to read the password"));
    button->setAccessibleName(QStringLiteral("Show the password"));
    QObject::connect(button, &QToolButton::pressed, &box, [&box] { box.setEchoMode(QLineEdit::Normal); });
    QObject::connect(button, &QToolButton::released, &box, [&box] { box.setEchoMode(QLineEdit::Password); });
  }
}

}  // namespace pellorin
