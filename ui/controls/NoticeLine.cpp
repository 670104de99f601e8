#include "ui/controls/NoticeLine.h"

#include <QAccessible>

namespace pellorin {

NoticeLine::NoticeLine(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setFocusPolicy(Qt::StrongFocus);
  setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
  hide();
}

void NoticeLine::Say(const std::string& sentence) {
  const QString said = QString::fromStdString(sentence).trimmed();
  setVisible(!said.isEmpty());
  if (said == text()) return;
  setText(said);
  setAccessibleName(said);
  if (said.isEmpty()) return;
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void NoticeLine::KeepPlace() {
  QSizePolicy policy = sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  setSizePolicy(policy);
}

}  // namespace pellorin
