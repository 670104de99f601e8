#include "ui/controls/CaptionedFrame.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

namespace pellorin {
namespace {

constexpr int kMargin = 9;   // as in the layouts of the pages
constexpr int kSpacing = 6;  // from the caption to the first row; the layout's margin adds the rest

}  // namespace

CaptionedFrame::CaptionedFrame(QWidget* parent) : QFrame(parent) {
  setFrameShape(QFrame::StyledPanel);
  setFrameShadow(QFrame::Raised);
  MakeRoom();
}

void CaptionedFrame::setTitle(const QString& title) {
  title_ = title;
  setAccessibleName(title);
  MakeRoom();
  update();
}

void CaptionedFrame::MakeRoom() {
  const QFontMetrics caption(CaptionFont());
  setContentsMargins(0, caption.height() + kSpacing, 0, 0);
}

QSize CaptionedFrame::minimumSizeHint() const {
  const int caption = QFontMetrics(CaptionFont()).horizontalAdvance(title_);
  return QFrame::minimumSizeHint().expandedTo({caption + 2 * kMargin, 0});
}

// QFrame sets margins of its own on most of these events.
bool CaptionedFrame::event(QEvent* event) {
  const bool isHandled = QFrame::event(event);
  for (const QEvent::Type type :
       {QEvent::Polish, QEvent::FontChange, QEvent::StyleChange, QEvent::ParentChange})
    if (event->type() == type) MakeRoom();
  return isHandled;
}

QFont CaptionedFrame::CaptionFont() const {
  QFont font = this->font();
  font.setBold(true);
  return font;
}

void CaptionedFrame::paintEvent(QPaintEvent*) {
  QStyleOptionFrame frame;
  initStyleOption(&frame);
  frame.rect = rect();  // QFrame alone would leave the caption outside
  QPainter painter(this);
  style()->drawControl(QStyle::CE_ShapedFrame, &frame, &painter, this);
  painter.setFont(CaptionFont());
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(rect().adjusted(kMargin, kMargin, -kMargin, -kMargin), Qt::AlignLeft | Qt::AlignTop,
                   title_);
}

}  // namespace pellorin
