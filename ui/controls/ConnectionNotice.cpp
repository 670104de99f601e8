#include "ui/controls/ConnectionNotice.h"

#include <QAccessible>

namespace pellorin {

ConnectionNotice::ConnectionNotice(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setFocusPolicy(Qt::StrongFocus);
  setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
  hide();
}

void ConnectionNotice::Say(const std::string& sentence) {
  setText(QString::fromStdString(sentence));
  setAccessibleName(text());
  setVisible(!sentence.empty());
  if (sentence.empty()) return;
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

}  // namespace pellorin
