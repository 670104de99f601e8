// A text in the middle of what is seen of a page that has nothing to show yet: it says what to press. Takes
// no input, so that the page below it stays usable, and is no part of the page's layout.
#pragma once

#include <QLabel>

namespace pellorin {

class EmptyPageHint : public QLabel {
  Q_OBJECT

 public:
  explicit EmptyPageHint(QWidget& page);

  // Shows the text; an empty one hides the hint.
  void Say(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;  // keeps it in the middle

 private:
  void MoveToMiddle();
};

}  // namespace pellorin
