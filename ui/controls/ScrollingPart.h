// A part of a window that scrolls where the window is too small for it, and asks for its whole size where it
// is not. Content that grows later scrolls: the window stays as it is.
#pragma once

#include <QScrollArea>

namespace pellorin {

class ScrollingPart : public QScrollArea {
 public:
  explicit ScrollingPart(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;  // a few lines
};

// As large as the window's content asks for, or as it is when that is larger. Never larger than its screen.
void FitScreen(QWidget& window);
// What a window on that screen may take, inside its frame.
QSize RoomOnScreen(const QWidget& window);

}  // namespace pellorin
