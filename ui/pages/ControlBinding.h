// Connects the controls of a page with handlers and with the settings that they edit. Handlers run for the
// user's edits and not while a Quiet object lives; none of their failures reaches the event loop. When a
// setting cannot be stored the page's refill puts the stored values back into the controls.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/UserMessages.h"
#include "config/Section.h"
#include "ui/controls/DateTimePicker.h"

namespace pellorin {

struct TextRow {
  QLineEdit* control;
  const char* key;
};

struct NumberRow {
  QLineEdit* control;
  const char* key;
  const char* refusal;  // the sentence for a text that is neither empty nor a number
};

// An option button, the setting that it stands for, and where the focus goes when the user chooses it.
struct OptionRow {
  QRadioButton* button;
  const char* key;
  const char* value;
  QWidget* focus = nullptr;
};

class ControlBinding {
 public:
  // The settings that a page's controls edit.
  struct Target {
    std::function<Section*()> section;  // the one shown, or none
    std::function<void(const std::string& key, const std::string& value)> persist;
    std::function<void()> refill;
  };
  using Handler = std::function<void()>;

  explicit ControlBinding(UserMessages& messages, Target target = {});

  void OnClick(QAbstractButton* button, Handler handler);
  void OnChoice(QComboBox* list, Handler handler);  // also when the shown entry is chosen again
  void OnEdit(QLineEdit* text, Handler handler);
  void OnEdit(DateTimePicker* picker, Handler handler);
  void OnSelection(QListWidget* list, Handler handler);
  void Bind(const TextRow& row);
  void Bind(const NumberRow& row);

  void Persist(const std::string& key, const std::string& value);

  // Tells which control shows a setting; for the rows above that is known. A setting may have several.
  void AddField(const char* key, QWidget* control) { fields_.emplace(key, control); }
  // Of the fields of these settings that are on, focuses the one that Tab reaches first from `start`. False
  // when there is none.
  bool FocusFirst(const std::vector<std::string>& keys, QWidget& start) const;

  class Quiet {
   public:
    explicit Quiet(int& depth) : depth_(depth) { ++depth_; }
    ~Quiet() { --depth_; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

   private:
    int& depth_;
  };
  [[nodiscard]] Quiet KeepQuiet() { return Quiet(quietDepth_); }

 private:
  void Run(const Handler& handler);
  void EditNumber(const NumberRow& row);
  QWidget* FieldOf(const std::string& key) const;

  UserMessages& messages_;
  Target target_;
  std::multimap<std::string, QWidget*> fields_;
  int quietDepth_ = 0;
};

// A text box and the text of a setting.
inline std::string TextOf(const QLineEdit& control) {
  return control.text().toStdString();
}
inline void ShowValue(QLineEdit& control, const Section& section, const char* key) {
  control.setText(QString::fromStdString(section.GetValue(key)));
}

// Chooses an option or not, whatever the others of its group are.
void SetChosen(QRadioButton& option, bool isChosen);

// A text box takes what a setting holds: by itself it would cut it at 32,767 characters.
void AllowAnyLength(QWidget& window);

// The wheel never changes a field that has no focus: it scrolls over it.
void IgnoreWheelWithoutFocus(QWidget& window);

// Of options that exclude each other Tab leads to the chosen one and the arrow keys to the others; to each of
// them while none is chosen. Qt alone leads to the one that had the focus last.
void LeadTabToChosenOptions(QWidget& window);

}  // namespace pellorin
