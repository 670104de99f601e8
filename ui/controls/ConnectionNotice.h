// A line that says what protected the last connection to a SQL Server. Hidden while it has nothing to say. It
// asks for one line's height and no width, so that it does not widen the window.
#pragma once

#include <QLabel>
#include <string>

namespace pellorin {

class ConnectionNotice : public QLabel {
 public:
  explicit ConnectionNotice(QWidget* parent = nullptr);

  QSize sizeHint() const override { return {0, fontMetrics().height()}; }
  QSize minimumSizeHint() const override { return sizeHint(); }
  void Say(const std::string& sentence);  // also to a screen reader; an empty one takes the line away
};

}  // namespace pellorin
