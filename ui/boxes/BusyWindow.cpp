#include "ui/boxes/BusyWindow.h"

#include <QApplication>
#include <QEvent>

namespace pellorin {

BusyWindow::BusyWindow(QWidget& window)
    : window_(&window), focus_(window.focusWidget()), wasEnabled_(window.isEnabled()) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  window.installEventFilter(this);
  window.setEnabled(false);
  window.repaint();
}

BusyWindow::~BusyWindow() {
  QCoreApplication::processEvents();  // discards input queued while disabled
  QApplication::restoreOverrideCursor();
  if (!window_ || !wasEnabled_) return;
  window_->setEnabled(true);
  if (focus_) focus_->setFocus();  // disabling the window took it
}

// The window manager's close button also works on a disabled window.
bool BusyWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Close || watched != window_) return false;
  event->ignore();
  return true;
}

}  // namespace pellorin
