// The kinds of rows that a SettingsForm is made of. A row names a control, the key of the setting that it
// edits and, where a missing setting has a default, what is shown then.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ui/controls/DateTimePicker.h"

namespace pellorin {

struct TextRow {
  QLineEdit* box;
  const char* key;
  std::string ifMissing = {};
};

struct NumberRow {
  QLineEdit* box;
  const char* key;
  const char* refusal;  // the sentence for a text that is neither empty nor a number
};

struct CheckRow {  // "1" or "0"
  QCheckBox* box;
  const char* key;
  const char* ifMissing = "0";
};

struct PickerRow {
  DateTimePicker* picker;
  const char* key;
  std::function<std::string()> ifMissing;
};

struct ListRow {
  QComboBox* list;
  const char* key;
  // Called with a stored text that is lost because the list does not offer it, and with the empty text when
  // the user has chosen an item.
  std::function<void(const std::string& text)> onLost = {};
};

// Check boxes that stand for the names in one setting: "monday,friday".
struct DaysRow {
  const char* key;
  std::vector<std::pair<QCheckBox*, const char*>> days;
};

struct Option {
  QRadioButton* button;
  const char* value;
  QWidget* focus = nullptr;  // where the focus goes when the user chooses it
};

// Option buttons that exclude each other. Choosing one switches the groups of controls that its tag names.
struct OptionRow {
  const char* key;
  std::vector<Option> options;
  // The option's value for a stored text. A value that no option has chooses none; nothing leaves the buttons
  // as they are. Without this function the stored text is the value.
  std::function<std::optional<std::string>(const std::string& stored)> valueOf = {};
  const QRadioButton* whenNone = nullptr;            // whose groups are switched while none is chosen
  std::function<void(const Option&)> onShown = {};   // after its groups were switched
  std::function<void(const Option&)> onChosen = {};  // by the user, after it was stored
};

}  // namespace pellorin
