// A line that says something about its page: hidden while it is empty, read out by a screen reader when its
// text changes. It asks for the height of one line and for no width, so that it does not widen the window.
#pragma once

#include <QLabel>
#include <string>

namespace pellorin {

class NoticeLine : public QLabel {
  Q_OBJECT

 public:
  explicit NoticeLine(QWidget* parent = nullptr);

  QSize sizeHint() const override { return {0, fontMetrics().height()}; }
  QSize minimumSizeHint() const override { return sizeHint(); }
  void Say(const std::string& sentence);  // an empty one hides the line
  // Its place stays free while it is hidden, so that nothing moves when it appears.
  void KeepPlace();
};

}  // namespace pellorin
