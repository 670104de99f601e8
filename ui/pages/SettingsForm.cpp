#include "ui/pages/SettingsForm.h"

#include <algorithm>
#include <set>

#include "base/TextCase.h"
#include "config/Ini.h"
#include "config/NumericText.h"
#include "config/ValueOrDefault.h"
#include "ui/controls/ControlValues.h"

namespace pellorin {
namespace {

// Ticks the box when the day occurs anywhere in the text, in any letter case.
void ToggleDay(const std::string& day, const std::string& days, QCheckBox& box) {
  box.setChecked(FoldCase(days).find(day) != std::string::npos);
}

}  // namespace

SettingsForm::SettingsForm(const Surroundings& surroundings, std::function<void()> refill)
    : with_(surroundings),
      refill_(std::move(refill)),
      persist_(ConfigurationSession::KindOf(surroundings.type).persist) {}

void SettingsForm::Add(const TextRow& row, WhenShown whenShown) {
  AddField(row.key, row.box);
  with_.events.OnEdit(row.box, [this, box = row.box, key = row.key] { Store(key, TextOf(*box)); });
  rows_.push_back({row.key, whenShown,
                   [row](const std::string& stored) {
                     SetText(*row.box,
                             row.ifMissing.empty() ? stored : ValueOrDefault(stored, row.ifMissing));
                   },
                   [row](const std::string&) { return TextOf(*row.box); }});
}

void SettingsForm::Add(const NumberRow& row) {
  AddField(row.key, row.box);
  with_.events.OnEdit(row.box, [this, row] { EditNumber(row); });
  rows_.push_back({row.key, WhenShown::StoresNothing,
                   [row](const std::string& stored) { SetText(*row.box, stored); },
                   [row](const std::string&) { return TextOf(*row.box); }});
}

void SettingsForm::Add(const CheckRow& row) {
  const auto shown = [row] { return row.box->isChecked() ? "1" : "0"; };
  AddField(row.key, row.box);
  with_.events.OnClick(row.box, [this, key = row.key, shown] { Store(key, shown()); });
  rows_.push_back({row.key, WhenShown::StoresNothing,
                   [row](const std::string& stored) {
                     row.box->setChecked(ValueOrDefault(stored, row.ifMissing) == "1");
                   },
                   [shown](const std::string&) { return shown(); }});
}

void SettingsForm::Add(const PickerRow& row, WhenShown whenShown) {
  AddField(row.key, row.picker);
  with_.events.On(row.picker, &DateTimePicker::edited,
                  [this, picker = row.picker, key = row.key] { Store(key, picker->ValueText()); });
  rows_.push_back({row.key, whenShown,
                   [row](const std::string& stored) {
                     row.picker->SetValueText(ValueOrDefault(stored, row.ifMissing()));
                   },
                   [row](const std::string&) { return row.picker->ValueText(); }});
}

void SettingsForm::Add(const ListRow& row, WhenShown whenShown) {
  const ListRow& kept = lists_.emplace_back(row);
  AddField(row.key, row.list);
  with_.events.OnChoice(row.list, [this, &kept] { ChooseItem(kept, TextOf(*kept.list)); });
  rows_.push_back({row.key, whenShown,
                   [list = row.list](const std::string& stored) { SelectListItem(*list, stored); },
                   [list = row.list](const std::string&) { return TextOf(*list); }, row.onLost});
}

void SettingsForm::Add(const DaysRow& row) {
  AddField(row.key, row.days.front().first);
  for (const auto& [box, name] : row.days) with_.events.OnClick(box, [this, row] { PersistDays(row); });
  rows_.push_back({row.key, WhenShown::StoresNothing,
                   [days = row.days](const std::string& stored) {
                     for (const auto& [box, name] : days) ToggleDay(name, stored, *box);
                   },
                   [](const std::string& stored) { return stored; }});
}

void SettingsForm::Add(const OptionRow& row, WhenShown whenShown) {
  const OptionRow& kept = options_.emplace_back(row);
  for (const Option& option : kept.options)
    with_.events.OnClick(option.button, [this, &kept, &option] {
      Choose(kept, option);
      if (option.focus != nullptr && option.focus->isVisible()) option.focus->setFocus();
    });
  rows_.push_back({row.key, whenShown,
                   [this, &kept](const std::string& stored) { ShowOptions(kept, stored); },
                   [this, &kept](const std::string& stored) { return ChosenValue(kept, stored); }});
}

void SettingsForm::Fill() {
  const Section* section = Shown();
  if (section == nullptr) return;
  const auto quiet = with_.events.KeepQuiet();
  for (const Row& row : rows_) row.show(section->GetValue(row.key));
}

void SettingsForm::StoreShown() {
  Steps steps;
  for (const Row& row : rows_) {
    const std::string stored = Shown()->GetValue(row.key);
    if (row.whenShown == WhenShown::StoresNothing) continue;
    if (row.whenShown == WhenShown::StoresIfPresent && stored.empty()) continue;
    const std::optional<std::string> shown = row.shown(stored);
    if (!shown) continue;
    steps.Run([&] {
      (with_.session.*persist_)(row.key, *shown);
      if (row.onLost && shown->empty()) row.onLost(stored);
    });
  }
  steps.RaiseFailures();
}

void SettingsForm::Store(const char* key, const std::string& value) {
  try {
    (with_.session.*persist_)(key, value);
  } catch (const NumberedError&) {
    refill_();
    throw;
  }
}

void SettingsForm::EditNumber(const NumberRow& row) {
  const Section* section = Shown();
  const std::string text = TextOf(*row.box);
  if (section == nullptr || text.empty() || IsNumber(text, section->Owner->Locale())) {
    Store(row.key, text);
    return;
  }
  with_.messages.Show({.text = row.refusal, .title = "Data Type Error"});
  const auto quiet = with_.events.KeepQuiet();
  SetText(*row.box, section->GetValue(row.key));
  row.box->setFocus();
}

void SettingsForm::PersistDays(const DaysRow& row) {
  std::string days;
  for (const auto& [box, name] : row.days)
    if (box->isChecked()) days += (days.empty() ? "" : ",") + std::string(name);
  Store(row.key, days);
}

void SettingsForm::SwitchGroups(const OptionRow& row, const Option& option) {
  with_.tags.ToggleControls(ControlTags::TagOf(*option.button));
  if (row.onShown) row.onShown(option);
}

void SettingsForm::ShowOptions(const OptionRow& row, const std::string& stored) {
  const std::optional<std::string> value = row.valueOf ? row.valueOf(stored) : stored;
  bool isAnyChosen = false;
  for (const Option& option : row.options) {
    const bool isChosen = value ? option.value == *value : option.button->isChecked();
    SetChosen(*option.button, isChosen);
    if (isChosen) SwitchGroups(row, option);
    isAnyChosen = isAnyChosen || isChosen;
  }
  if (!isAnyChosen && row.whenNone != nullptr) with_.tags.ToggleControls(ControlTags::TagOf(*row.whenNone));
}

std::optional<std::string> SettingsForm::ChosenValue(const OptionRow& row, const std::string& stored) const {
  if (row.valueOf && !row.valueOf(stored)) return std::nullopt;
  for (const Option& option : row.options)
    if (option.button->isChecked()) return option.value;
  return std::nullopt;
}

void SettingsForm::Choose(const OptionRow& row, const Option& option) {
  option.button->setChecked(true);
  SwitchGroups(row, option);
  Store(row.key, option.value);
  if (row.onChosen) row.onChosen(option);
}

void SettingsForm::Choose(const QRadioButton* button) {
  for (const OptionRow& row : options_)
    for (const Option& option : row.options)
      if (option.button == button) Choose(row, option);
}

void SettingsForm::ChooseItem(const ListRow& row, const std::string& text) {
  const bool isOffered = SelectListItem(*row.list, text);
  if (row.onLost) row.onLost(isOffered ? std::string() : text);
  Store(row.key, TextOf(*row.list));
}

void SettingsForm::Choose(const QComboBox* list, const std::string& text) {
  for (const ListRow& row : lists_)
    if (row.list == list) ChooseItem(row, text);
}

// Prefers an empty field: it lacks what the setting needs.
QWidget* SettingsForm::FieldOf(const std::string& key) const {
  QWidget* first = nullptr;
  for (const Field& field : fields_) {
    if (field.key != key || !field.control->isEnabled()) continue;
    const auto* box = qobject_cast<const QLineEdit*>(field.control);
    if (box != nullptr && box->text().isEmpty()) return field.control;
    if (first == nullptr) first = field.control;
  }
  return first;
}

bool SettingsForm::FocusFirst(const std::vector<std::string>& keys, QWidget& start) const {
  std::set<const QWidget*> fields;
  for (const std::string& key : keys)
    if (const QWidget* field = FieldOf(key)) fields.insert(field);
  if (fields.empty()) return false;
  QWidget* control = &start;
  while (!fields.contains(control)) control = control->nextInFocusChain();
  control->setFocus(Qt::TabFocusReason);  // as Tab does: selects the content
  return true;
}

}  // namespace pellorin
