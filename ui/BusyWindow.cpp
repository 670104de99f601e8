#include "ui/BusyWindow.h"

#include <QApplication>

namespace pellorin {

BusyWindow::BusyWindow(QWidget& window) : window_(window), focus_(window.focusWidget()) {
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  window_.setEnabled(false);
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

BusyWindow::~BusyWindow() {
  QCoreApplication::processEvents();  // to a window that is disabled: input is dropped
  window_.setEnabled(true);
  if (focus_ != nullptr) focus_->setFocus(Qt::OtherFocusReason);
  QGuiApplication::restoreOverrideCursor();
}

}  // namespace pellorin
