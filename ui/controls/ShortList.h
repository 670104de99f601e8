// A list that asks for six lines and takes what room there is. QListWidget asks for 192 pixels, for which a
// page would begin to scroll although the list can do with less.
#pragma once

#include <QListWidget>

namespace pellorin {

class ShortList : public QListWidget {
 public:
  using QListWidget::QListWidget;

  QSize sizeHint() const override { return {QListWidget::sizeHint().width(), HeightOf(6)}; }
  QSize minimumSizeHint() const override { return {QListWidget::minimumSizeHint().width(), HeightOf(4)}; }

 private:
  int HeightOf(int lines) const { return lines * fontMetrics().lineSpacing() + 2 * frameWidth(); }
};

}  // namespace pellorin
