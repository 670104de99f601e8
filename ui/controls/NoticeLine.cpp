#include "ui/controls/NoticeLine.h"

#include <QAccessibleWidget>

namespace pellorin {

namespace {

// Screen readers read a notification out when it is shown.
QAccessibleInterface* MakeNotification(const QString& className, QObject* object) {
  if (className != QLatin1String(NoticeLine::staticMetaObject.className())) return nullptr;
  return new QAccessibleWidget(static_cast<NoticeLine*>(object), QAccessible::Notification);
}

}  // namespace

NoticeLine::NoticeLine(QWidget* parent) : QLabel(parent) {
  QAccessible::installFactory(MakeNotification);  // installed once, however often
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
  QAccessibleEvent shown(this, QAccessible::ObjectShow);
  QAccessible::updateAccessibility(&shown);
}

void NoticeLine::KeepPlace() {
  QSizePolicy policy = sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  setSizePolicy(policy);
}

}  // namespace pellorin
