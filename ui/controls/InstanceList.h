// A list in which any number of entries can be selected. Typing a letter moves to the next entry that begins
// with it, and selects nothing. QListWidget alone would select that entry, or deselect it.
#pragma once

#include "ui/controls/ShortList.h"

namespace pellorin {

class InstanceList : public ShortList {
 public:
  using ShortList::ShortList;

  void keyboardSearch(const QString& letters) override {
    const SelectionMode mode = selectionMode();
    setSelectionMode(NoSelection);
    ShortList::keyboardSearch(letters);
    setSelectionMode(mode);
  }
};

}  // namespace pellorin
