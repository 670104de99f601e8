#include "ui/controls/PasswordPeek.h"

#include <QAction>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>

namespace pellorin {
namespace {

// Lids and pupil.
QPixmap Eye(const QColor& ink) {
  constexpr int kSize = 32;
  QPixmap picture(kSize, kSize);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(ink, 2.5));
  QPainterPath lids(QPointF(3, 16));
  lids.quadTo(16, 2, 29, 16);
  lids.quadTo(16, 30, 3, 16);
  painter.drawPath(lids);
  painter.setBrush(ink);
  painter.drawEllipse(QPointF(16, 16), 3.5, 3.5);
  return picture;
}

// In the colours of texts: the style's own grey for what is off can hardly be told from black.
QIcon EyeOf(const QPalette& colours) {
  QIcon icon(Eye(colours.color(QPalette::Active, QPalette::Text)));
  icon.addPixmap(Eye(colours.color(QPalette::Disabled, QPalette::Text)), QIcon::Disabled);
  return icon;
}

}  // namespace

void AddPasswordPeek(QLineEdit& box) {
  const QAction* peek = box.addAction(EyeOf(box.palette()), QLineEdit::TrailingPosition);
  for (QToolButton* button : box.findChildren<QToolButton*>()) {
    if (button->defaultAction() != peek) continue;
    button->setToolTip(QStringLiteral("Hold down to read the password"));
    button->setAccessibleName(QStringLiteral("Show the password"));
    QObject::connect(button, &QToolButton::pressed, &box, [&box] { box.setEchoMode(QLineEdit::Normal); });
    QObject::connect(button, &QToolButton::released, &box, [&box] { box.setEchoMode(QLineEdit::Password); });
  }
}

}  // namespace pellorin
