// A line that says what protected the last connection to a SQL Server. Not there while it has nothing to say;
// it takes the width that it is given and asks for one line's height, so that it does not push the window.
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
