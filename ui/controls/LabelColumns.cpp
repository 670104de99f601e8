#include "ui/controls/LabelColumns.h"

#include <QAbstractButton>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <algorithm>
#include <vector>

namespace pellorin {
namespace {

bool IsLabelling(const QWidget* control) {
  return qobject_cast<const QLabel*>(control) != nullptr ||
         qobject_cast<const QAbstractButton*>(control) != nullptr;
}

// Those in the first column that do not reach into the second.
std::vector<QWidget*> LabelsOf(const QGridLayout& grid) {
  std::vector<QWidget*> labels;
  for (int index = 0; index < grid.count(); ++index) {
    int row = 0, column = 0, rows = 0, columns = 0;
    grid.getItemPosition(index, &row, &column, &rows, &columns);
    QWidget* control = grid.itemAt(index)->widget();
    if (column == 0 && columns == 1 && IsLabelling(control)) labels.push_back(control);
  }
  return labels;
}

class LabelColumns : public QObject {
 public:
  explicit LabelColumns(QWidget& page) : QObject(&page) {
    for (QGridLayout* grid : page.findChildren<QGridLayout*>())
      if (!grid->parentWidget()->property("ownColumns").toBool() && !LabelsOf(*grid).empty())
        grids_.push_back(grid);
    for (QLabel* label : page.findChildren<QLabel*>())
      if (label->property("inLabelColumn").toBool()) others_.push_back(label);
    page.installEventFilter(this);
    Align();
  }

  bool eventFilter(QObject* page, QEvent* event) override {
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Align();
    return QObject::eventFilter(page, event);
  }

 private:
  void Align() {
    int width = 0;
    const auto widen = [&width](const QWidget* label) { width = std::max(width, label->sizeHint().width()); };
    for (const QGridLayout* grid : grids_) std::ranges::for_each(LabelsOf(*grid), widen);
    std::ranges::for_each(others_, widen);
    for (QGridLayout* grid : grids_) grid->setColumnMinimumWidth(0, width);
    for (QWidget* label : others_) label->setMinimumWidth(width);
  }

  std::vector<QGridLayout*> grids_;
  std::vector<QWidget*> others_;
};

}  // namespace

void AlignLabelColumns(QWidget& page) {
  new LabelColumns(page);
}

}  // namespace pellorin
