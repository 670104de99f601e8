#include "ui/probes/WatchedWork.h"

#include <QApplication>
#include <QKeyEvent>

namespace pellorin {

WatchedWork::WatchedWork(QWidget& window, NoticeLine& line, const std::string& doing, MailComponent& mail)
    : line_(line), saidBefore_(line.text().toStdString()), busy_(window), mail_(mail) {
  line_.Say(doing);
  line_.repaint();
  qApp->installEventFilter(this);
  mail_.SetWatch([this] {
    QCoreApplication::processEvents();  // paints the window and, since it is disabled, drops its input
    return !isCancelled_;
  });
}

WatchedWork::~WatchedWork() {
  mail_.SetWatch({});
  line_.Say(saidBefore_);
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
