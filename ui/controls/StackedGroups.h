// Puts the groups of a page under each other where the window is too narrow for two columns, so that nobody
// has to scroll sideways.
#pragma once

#include <QGridLayout>

#include "ui/controls/ScrollingPart.h"

namespace pellorin {

// Call it once, when the part holds the page with those groups.
void StackGroupsWhenNarrow(ScrollingPart& part, QGridLayout& groups);

}  // namespace pellorin
