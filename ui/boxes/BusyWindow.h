// Marks a window as busy while an object of this class lives, for work that blocks the program: wait pointer,
// the window painted as disabled once. What the user types and clicks meanwhile is discarded at the end; then
// the window, its focus and the pointer are as before.
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
