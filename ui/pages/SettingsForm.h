// The plain settings of a page, each declared once as a row:
//
//   form.Add(TextRow{ui_->txtSenderEmail, MailKey::kSenderEmail});
//   form.Add(CheckRow{ui_->chkEncodeHTML, SqlKey::kEncodeHTML});
//   form.Fill();  // shows the settings of the current section
//
// The form shows each setting, stores what the user edits at once, and finds the field of a setting that
// validation refused. All writes go through the session's Persist operation of its kind of section. A setting
// that cannot be stored raises a NumberedError, after the page has been filled again.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/UserMessages.h"
#include "ui/boxes/GuardedEvents.h"
#include "ui/controls/ControlTags.h"
#include "ui/pages/ConfigurationSession.h"
#include "ui/pages/SettingRows.h"

namespace pellorin {

class SettingsForm {
 public:
  struct Surroundings {
    ConfigurationSession& session;
    SectionType type;
    UserMessages& messages;
    const ControlTags& tags;
    GuardedEvents& events;
  };
  // `refill` fills the whole page from what is stored.
  SettingsForm(const Surroundings& surroundings, std::function<void()> refill);
  SettingsForm(const SettingsForm&) = delete;
  SettingsForm& operator=(const SettingsForm&) = delete;

  // What StoreShown does with a row.
  enum class WhenShown { StoresNothing, Stores, StoresIfPresent };

  void Add(const TextRow& row, WhenShown whenShown = WhenShown::StoresNothing);
  void Add(const NumberRow& row);
  void Add(const CheckRow& row);
  void Add(const PickerRow& row, WhenShown whenShown = WhenShown::StoresNothing);
  void Add(const ListRow& row, WhenShown whenShown = WhenShown::StoresNothing);
  void Add(const DaysRow& row);
  void Add(const OptionRow& row, WhenShown whenShown = WhenShown::StoresNothing);
  // A control that shows a setting which the page stores itself. A setting may have several.
  void AddField(const char* key, QWidget* control) { fields_.push_back({key, control}); }

  void Fill();        // stores nothing and runs no handler
  void StoreShown();  // in the order of the rows; after a failure the other rows are still stored

  void Store(const char* key, const std::string& value);
  // As if the user had chosen it, except that the focus stays.
  void Choose(const QRadioButton* button);
  void Choose(const QComboBox* list, const std::string& text);  // none if no item has that text

  // Focuses the enabled field of these settings that Tab reaches first from `start`. False without one.
  bool FocusFirst(const std::vector<std::string>& keys, QWidget& start) const;

 private:
  struct Row {
    const char* key;
    WhenShown whenShown;
    std::function<void(const std::string& stored)> show;
    // The text to store; nothing when no text says what is shown.
    std::function<std::optional<std::string>(const std::string& stored)> shown;
    std::function<void(const std::string& stored)> onLost = {};
  };
  struct Field {
    std::string key;
    QWidget* control;
  };

  const Section* Shown() const { return with_.session.Current(with_.type); }
  void EditNumber(const NumberRow& row);
  void PersistDays(const DaysRow& row);
  void ShowOptions(const OptionRow& row, const std::string& stored);
  std::optional<std::string> ChosenValue(const OptionRow& row, const std::string& stored) const;
  void SwitchGroups(const OptionRow& row, const Option& option);
  void Choose(const OptionRow& row, const Option& option);
  void ChooseItem(const ListRow& row, const std::string& text);
  QWidget* FieldOf(const std::string& key) const;

  Surroundings with_;
  std::function<void()> refill_;
  void (ConfigurationSession::*persist_)(const std::string& key, const std::string& value);
  std::vector<Row> rows_;
  std::deque<OptionRow> options_;  // handlers keep their addresses
  std::deque<ListRow> lists_;
  std::vector<Field> fields_;
};

}  // namespace pellorin
