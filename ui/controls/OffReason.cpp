#include "ui/controls/OffReason.h"

#include <QEvent>

namespace pellorin {
namespace {

// Belongs to the control. The reason follows the usual tip on a line of its own.
class OffReason : public QObject {
 public:
  OffReason(QWidget& control, const QString& reason)
      : QObject(&control), control_(control), usualTip_(control.toolTip()), reason_(reason) {
    control.installEventFilter(this);
    ShowTip();
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::EnabledChange) ShowTip();
    return QObject::eventFilter(watched, event);
  }

 private:
  void ShowTip() {
    control_.setToolTip(control_.isEnabled() ? usualTip_ : usualTip_ + QLatin1Char('\n') + reason_);
  }

  QWidget& control_;
  QString usualTip_, reason_;
};

}  // namespace

void ExplainWhatIsOff(QWidget& window) {
  for (QWidget* control : window.findChildren<QWidget*>())
    if (const QVariant reason = control->property("whyOff"); reason.isValid())
      new OffReason(*control, reason.toString());
}

}  // namespace pellorin
