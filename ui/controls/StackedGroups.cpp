#include "ui/controls/StackedGroups.h"

#include <QEvent>
#include <vector>

namespace pellorin {
namespace {

class StackedGroups : public QObject {
 public:
  StackedGroups(ScrollingPart& part, QGridLayout& groups) : QObject(&part), part_(part), groups_(groups) {
    for (int index = 0; index < groups.count(); ++index) {
      Place place{groups.itemAt(index)};
      groups.getItemPosition(index, &place.row, &place.column, &place.rows, &place.columns);
      places_.push_back(place);
    }
    part.viewport()->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize) FitWidth(part_.viewport()->width());
    return QObject::eventFilter(watched, event);
  }

 private:
  struct Place {
    QLayoutItem* item;
    int row = 0, column = 0, rows = 0, columns = 0;
  };

  void Put(const Place& place) {
    if (QLayout* column = place.item->layout())
      groups_.addLayout(column, place.row, place.column, place.rows, place.columns);
    else
      groups_.addItem(place.item, place.row, place.column, place.rows, place.columns);
  }

  void FitWidth(int width) {
    if (!isStacked_) widthOfTwo_ = part_.widget()->minimumSizeHint().width();
    const bool isNarrow = width < widthOfTwo_;
    if (isNarrow == isStacked_) return;
    isStacked_ = isNarrow;
    while (groups_.count() > 0) groups_.takeAt(0);
    int row = 0;
    for (const Place& place : places_) Put(isStacked_ ? Place{place.item, row++, 0, 1, 1} : place);
    groups_.setColumnStretch(1, isStacked_ ? 0 : 1);
  }

  ScrollingPart& part_;
  QGridLayout& groups_;
  std::vector<Place> places_;  // of the groups in two columns, in reading order
  int widthOfTwo_ = 0;         // what the page needs for two columns
  bool isStacked_ = false;
};

}  // namespace

void StackGroupsWhenNarrow(ScrollingPart& part, QGridLayout& groups) {
  new StackedGroups(part, groups);
}

}  // namespace pellorin
