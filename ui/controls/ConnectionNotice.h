// A line that says whether the last connection to a SQL Server was encrypted. Hidden while it is empty. It
// asks for the height of one line and for no width, so that it does not widen the window.
#pragma once

#include <QLabel>
#include <string>

namespace pellorin {

class ConnectionNotice : public QLabel {
 public:
  explicit ConnectionNotice(QWidget* parent = nullptr);

  QSize sizeHint() const override { return {0, fontMetrics().height()}; }
  QSize minimumSizeHint() const override { return sizeHint(); }
  void Say(const std::string& sentence);  // to a screen reader too; an empty one hides the line
};

}  // namespace pellorin
