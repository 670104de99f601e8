// While one lives, its window shows the wait pointer and takes no input: for work that keeps the program from
// looking at its user. What was clicked or typed meanwhile is dropped at the end, so that nothing happens
// twice; then the window is as it was, the focus included.
#pragma once

#include <QPointer>
#include <QWidget>

namespace pellorin {

class BusyWindow {
 public:
  explicit BusyWindow(QWidget& window);  // repaints it once
  ~BusyWindow();
  BusyWindow(const BusyWindow&) = delete;
  BusyWindow& operator=(const BusyWindow&) = delete;

 private:
  QWidget& window_;
  QPointer<QWidget> focus_;
};

}  // namespace pellorin
