// Choosing the item of a drop-down list that a stored text names.
#pragma once

#include <QComboBox>
#include <QSignalBlocker>
#include <string_view>

#include "platform/TextCase.h"

namespace pellorin {

// Selects the first item of that text, ignoring letter case; without one nothing is selected and the result
// is false. Runs no handler.
inline bool SelectListItem(QComboBox& list, std::string_view text) {
  const QSignalBlocker blocker(list);
  for (int index = 0; index < list.count(); ++index) {
    if (!EqualIgnoringCase(list.itemText(index).toStdString(), text)) continue;
    list.setCurrentIndex(index);
    return true;
  }
  list.setCurrentIndex(-1);
  return false;
}

}  // namespace pellorin
