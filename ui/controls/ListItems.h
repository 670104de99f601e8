// Items of lists: choosing the one that a stored text names, and those that stand for a section.
#pragma once

#include <QComboBox>
#include <QSignalBlocker>
#include <QVariant>
#include <string_view>

#include "base/TextCase.h"
#include "config/Ini.h"

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

// What an item that stands for a section holds: its address. A text could lose bytes of a name.
inline QVariant IdentityOf(const Section& section) {
  return QVariant::fromValue(reinterpret_cast<quintptr>(&section));
}
// The section that an item stands for; null for no item, and for one whose section has left the document.
inline Section* SectionOf(const QVariant& identity, const Ini& document) {
  return document.SectionAt(reinterpret_cast<const void*>(identity.value<quintptr>()));
}

}  // namespace pellorin
