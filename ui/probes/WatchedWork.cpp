#include "ui/probes/WatchedWork.h"

#include <QApplication>
#include <QKeyEvent>

namespace pellorin {

WatchedWork::WatchedWork(QWidget& window, MailComponent& mail) : busy_(window), mail_(mail) {
  qApp->installEventFilter(this);
  mail_.SetWatch([this] {
    QCoreApplication::processEvents();  // paints the window and, since it is disabled, drops its input
    return !isCancelled_;
  });
}

WatchedWork::~WatchedWork() {
  mail_.SetWatch({});
}

bool WatchedWork::eventFilter(QObject* /*watched*/, QEvent* event) {
  // An open box handles Escape itself.
  if (QApplication::activeModalWidget() != nullptr || event->type() != QEvent::KeyPress ||
      static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
    return false;
  isCancelled_ = true;
  return true;
}

}  // namespace pellorin
