#include "ui/controls/NumberBox.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace pellorin {

NumberBox::NumberBox(QWidget* parent) : QLineEdit(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void NumberBox::Count(int by) {
  bool isWhole = false;
  const qlonglong number = text().toLongLong(&isWhole);
  const qlonglong lowest = property("lowest").toLongLong();
  if (isReadOnly() || (!isWhole && !text().isEmpty())) return;
  selectAll();
  insert(QString::number(isWhole ? std::max(number + by, lowest) : lowest));  // can be undone
  selectAll();
}

void NumberBox::CountAt(QPoint place) {
  if (PlaceOfBoth().contains(place)) Count(Place(QStyle::SC_SpinBoxUp).contains(place) ? 1 : -1);
}

QStyleOptionSpinBox NumberBox::Arrows() const {
  QStyleOptionSpinBox option;
  option.initFrom(this);
  option.frame = true;
  option.subControls = QStyle::SC_SpinBoxUp | QStyle::SC_SpinBoxDown | QStyle::SC_SpinBoxFrame;
  option.stepEnabled = QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled;
  return option;
}

QRect NumberBox::Place(QStyle::SubControl arrow) const {
  const QStyleOptionSpinBox option = Arrows();
  return style()->subControlRect(QStyle::CC_SpinBox, &option, arrow, this);
}

QRect NumberBox::PlaceOfBoth() const {
  return Place(QStyle::SC_SpinBoxUp) | Place(QStyle::SC_SpinBoxDown);
}

// The right end of a spin box over that of the text box.
void NumberBox::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  const int left = PlaceOfBoth().left();
  painter.setClipRect(rect().adjusted(left, 0, 0, 0));
  const QStyleOptionSpinBox option = Arrows();
  style()->drawComplexControl(QStyle::CC_SpinBox, &option, &painter, this);
}

void NumberBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Up)
    Count(1);
  else if (event->key() == Qt::Key_Down)
    Count(-1);
  else
    QLineEdit::keyPressEvent(event);
}

void NumberBox::mousePressEvent(QMouseEvent* event) {
  if (PlaceOfBoth().contains(event->pos()))
    CountAt(event->pos());
  else
    QLineEdit::mousePressEvent(event);
}

void NumberBox::mouseDoubleClickEvent(QMouseEvent* event) {
  if (PlaceOfBoth().contains(event->pos()))
    CountAt(event->pos());
  else
    QLineEdit::mouseDoubleClickEvent(event);
}

void NumberBox::mouseMoveEvent(QMouseEvent* event) {
  setCursor(PlaceOfBoth().contains(event->pos()) ? Qt::ArrowCursor : Qt::IBeamCursor);
  QLineEdit::mouseMoveEvent(event);
}

void NumberBox::resizeEvent(QResizeEvent* event) {
  QLineEdit::resizeEvent(event);
  setTextMargins(0, 0, width() - PlaceOfBoth().left(), 0);
}

}  // namespace pellorin
