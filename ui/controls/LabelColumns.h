// Gives the labels of a page or dialog one common column, as wide as its widest label in the current font, so
// that the fields of all groups line up.
#pragma once

#include <QWidget>

namespace pellorin {

// Call it once, when the page has all its controls. It aligns what stands in the first column of each grid of
// a label column: labels, options and check boxes that take this column alone. Labels elsewhere join with the
// dynamic property "inLabelColumn" = true, a grid that is to be left alone has "ownColumns" = true on its
// widget.
void AlignLabelColumns(QWidget& page);

}  // namespace pellorin
