// The page "Queues": shows one queue at a time and writes each change of a control into its section at once.
// Showing a queue stores what is shown, so that the defaults of settings that are missing become stored ones.
// A queue with invalid settings cannot be left. A queue whose file cannot be used is named with file and
// reason; it can only be deleted.
#pragma once

#include <QCheckBox>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/pages/ControlBinding.h"
#include "ui/pages/SectionPage.h"
#include "ui/queues/QueueFilterEditor.h"
#include "ui/queues/QueuedServersList.h"

namespace Ui {
class frmQueues;
}

namespace pellorin {

class QueuesPage : public SectionPage {
  Q_OBJECT

 public:
  QueuesPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags,
             const LocaleConventions& locale, std::function<void(QWidget& owner)> showFilterHelp);
  ~QueuesPage() override;

  void StartBrandNew() override;
  void AddNewQueue(const std::string& name);
  void ShowSecurity(const std::string& note);  // of the connection that the last test made
  bool ValidateQueue();                        // reports what is invalid; true when no queue is shown

 protected:
  ControlBinding& Binding() override { return binding_; }
  void ShowCurrent() override;
  bool ValidateShown() override { return ValidateQueue(); }

 private:
  struct PickerRow {
    DateTimePicker* control;
    const char* key;
  };
  struct DayRow {
    QCheckBox* box;
    const char* name;
  };

  void MakeTables();
  void BindControls();

  void ShowUnusable(const Section& queue);
  void ShowProblem(const std::string& problem);
  void ShowSummary();
  void Fill();  // the controls from the settings; stores nothing
  void FillOptions(const Section& queue);
  static std::string ChosenValue(const Section& queue, std::string_view key);
  static void ToggleDay(const std::string& day, const std::string& days, QCheckBox& box);
  void StoreShown();
  std::optional<std::string> ShownValue(std::string_view key) const;

  void Choose(const OptionRow& option);       // by the user
  void ApplyOption(const OptionRow& option);  // its groups and captions
  void ShowOccurance(bool isWeekly);
  void PersistDays();
  bool IsDuplicate(const std::string& name) const;
  bool IsNameShared(const Section& queue) const;

  void btnAddQueue_Click();
  void btnDeleteQueue_Click();

  std::unique_ptr<Ui::frmQueues> ui_;
  ControlBinding binding_;
  QueuedServersList servers_;
  QueueFilterEditor filter_;
  std::vector<OptionRow> options_;
  std::vector<TextRow> texts_;
  std::vector<PickerRow> pickers_;
  std::vector<DayRow> days_;
};

}  // namespace pellorin
