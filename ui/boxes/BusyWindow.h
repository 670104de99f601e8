// Marks a window as busy while an object of this class lives, for work that blocks the program: shows the
// wait pointer and paints the window as disabled, once. At the end it discards what the user typed and
// clicked meanwhile, and restores the window, its focus and the pointer.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace pellorin {

class BusyWindow : public QObject {
 public:
  explicit BusyWindow(QWidget& window);
  ~BusyWindow() override;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPointer<QWidget> window_;
  QPointer<QWidget> focus_;
  bool wasEnabled_;
};

}  // namespace pellorin
