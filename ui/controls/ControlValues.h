// Reads and sets what controls hold, as the texts of the store.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <string>
#include <string_view>

#include "base/TextCase.h"

namespace pellorin {

inline std::string TextOf(const QLineEdit& box) {
  return box.text().toStdString();
}
inline std::string TextOf(const QComboBox& list) {
  return list.currentText().toStdString();
}
inline void SetText(QLineEdit& box, const std::string& text) {
  box.setText(QString::fromStdString(text));
  if (!box.hasFocus()) box.setCursorPosition(0);  // a long text shows its beginning
}

// Selects the first item of that text, ignoring letter case. Selects nothing and returns false when there is
// none. Runs no handler.
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

// Checks or unchecks a button and leaves its group alone. Qt alone would keep one of a group checked.
inline void SetChosen(QAbstractButton& button, bool isChosen) {
  const bool isExclusive = button.autoExclusive();
  button.setAutoExclusive(false);
  button.setChecked(isChosen);
  button.setAutoExclusive(isExclusive);
}

}  // namespace pellorin
