// A text box for a whole number, with arrows that count up and down. The arrow keys count, too. What is typed
// stays as it is typed; an arrow changes only a whole number or an empty box.
#pragma once

#include <QLineEdit>
#include <QStyleOptionSpinBox>

namespace pellorin {

class NumberBox : public QLineEdit {
 public:
  // The dynamic property "lowest" is where counting down ends; 0 unless it is set.
  explicit NumberBox(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Count(int by);
  void CountAt(QPoint place);
  QStyleOptionSpinBox Arrows() const;
  QRect Place(QStyle::SubControl arrow) const;
  QRect PlaceOfBoth() const;
};

}  // namespace pellorin
