#include "ui/controls/ScrollingPart.h"

#include <QScreen>
#include <QStyle>

namespace pellorin {

ScrollingPart::ScrollingPart(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  viewport()->setAutoFillBackground(false);
}

QSize ScrollingPart::sizeHint() const {
  QSize whole = widget()->sizeHint().expandedTo(widget()->minimumSizeHint());
  if (widget()->hasHeightForWidth()) whole.setHeight(widget()->heightForWidth(whole.width()));
  return whole;
}

QSize ScrollingPart::minimumSizeHint() const {
  constexpr int kLeastLetters = 40, kLeastLines = 8;
  const QSize least(kLeastLetters * fontMetrics().averageCharWidth(), kLeastLines * fontMetrics().height());
  return least.boundedTo(sizeHint());
}

QSize RoomOnScreen(const QWidget& window) {
  const int titleBar = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
  return window.screen()->availableSize() - QSize(0, titleBar);
}

void FitScreen(QWidget& window) {
  for (ScrollingPart* part : window.findChildren<ScrollingPart*>()) {
    part->ensurePolished();
    part->updateGeometry();  // its content may have changed since the window was asked last
  }
  const QSize wanted = window.sizeHint().expandedTo(window.size());
  window.resize(wanted.boundedTo(RoomOnScreen(window)));
}

}  // namespace pellorin
