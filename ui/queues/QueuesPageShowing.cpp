// Showing a queue: the controls from the settings, defaults for what is missing, and back.
#include <QTime>

#include "config/DateTimeText.h"
#include "config/ScheduleSummary.h"
#include "config/SettingKeys.h"
#include "config/ValueOrDefault.h"
#include "ui/boxes/FailureMessage.h"
#include "ui/controls/ListItems.h"
#include "ui/controls/QtDates.h"
#include "ui/queues/QueuesPage.h"
#include "ui_QueuesPage.h"

namespace pellorin {
namespace {

// The order in which the settings of a queue are shown and stored.
constexpr const char* kShownKeys[] = {QueueKey::kFrequency,     QueueKey::kEvery,       QueueKey::kOccursType,
                                      QueueKey::kOccursOnce,    QueueKey::kOccursEvery, QueueKey::kSpan,
                                      QueueKey::kStartTime,     QueueKey::kStartDate,   QueueKey::kEndTime,
                                      QueueKey::kEndDate,       QueueKey::kHasEndDate,  QueueKey::kTitle,
                                      QueueKey::kQueueByDefault};

std::string Today(const LocaleConventions& locale) {
  return WriteDateTime({DayOf(QDate::currentDate()), std::nullopt}, locale);
}

std::string DefaultOf(std::string_view key, const LocaleConventions& locale) {
  if (key == QueueKey::kOccursOnce)
    return QTime::currentTime().toString(QStringLiteral("HH:mm")).toStdString();
  if (key == QueueKey::kStartTime) return "12:00 AM";
  if (key == QueueKey::kEndTime) return "11:59:59 PM";
  if (key == QueueKey::kStartDate || key == QueueKey::kEndDate) return Today(locale);
  return "1";  // every, occursevery
}

bool HasKnownFrequency(const Section& queue) {
  const std::string frequency = queue.GetValue(QueueKey::kFrequency);
  return ValueOrDefault(frequency, "daily") == "daily" || frequency == "weekly";
}

}  // namespace

void QueuesPage::ShowCurrent() {
  Section& queue = *session_.CurrentQueue();
  queue.ListPosition = ui_->cmbQueues->currentIndex();
  if (!queue.QueueProblem().empty()) {
    ShowUnusable(queue);
    return;
  }
  ShowProblem("");
  RunGuarded(messages_, [&] {
    const ConfigurationSession::Edits edits(session_);
    Fill();
    if (queue.CanBeWritten()) StoreShown();
  });
  if (!HasKnownFrequency(queue) && !IsLeadingToFault())
    messages_.Show({.text = "Incorrect 'Occurs' value. Possible values are Daily or Weekly.",
                    .icon = MessageIcon::Critical});
}

// It takes the place of the schedule in words, which there is none of then: the window keeps its height.
void QueuesPage::ShowProblem(const std::string& problem) {
  ui_->lblQueueProblem->setText(
      QString::fromStdString("The definition of this queue cannot be used:\r\n" + problem));
  ui_->lblQueueProblem->setVisible(!problem.empty());
  ui_->fraSchedule->setVisible(problem.empty());
}

// Of all controls only these stay on: the queue can be deleted or left.
void QueuesPage::ShowUnusable(const Section& queue) {
  StartBrandNew();
  Selector().Select(queue);
  ShowProblem(queue.QueueProblem());
  for (QWidget* control : std::initializer_list<QWidget*>{ui_->Label31, ui_->cmbQueues, ui_->btnDeleteQueue,
                                                          ui_->lblQueueProblem})
    control->setEnabled(true);
}

void QueuesPage::StartBrandNew() {
  SectionPage::StartBrandNew();
  ShowOccurance(false);
  ShowProblem("");
  ShowSummary();
}

void QueuesPage::ShowSummary() {
  const Section* queue = session_.CurrentQueue();
  std::string words;
  if (queue != nullptr && queue->QueueProblem().empty())
    words = ScheduleSummary(*queue, queue->Owner->Locale(), DayOf(QDate::currentDate()));
  ui_->lblScheduleSummary->setText(QString::fromStdString(words));
}

void QueuesPage::Fill() {
  const Section& queue = *session_.CurrentQueue();
  const LocaleConventions& locale = queue.Owner->Locale();
  const auto quiet = binding_.KeepQuiet();
  servers_.Clear();  // what the last queue had selected is not this one's
  FillOptions(queue);
  for (const TextRow& row : texts_) {
    const std::string stored = queue.GetValue(row.key);
    const bool isTitle = row.control == ui_->txtQueueTitle;
    row.control->setText(
        QString::fromStdString(isTitle ? stored : ValueOrDefault(stored, DefaultOf(row.key, locale))));
  }
  for (const PickerRow& row : pickers_)
    row.control->SetValueText(ValueOrDefault(queue.GetValue(row.key), DefaultOf(row.key, locale)));
  const std::string days = queue.GetValue(QueueKey::kDays);
  for (const DayRow& day : days_) ToggleDay(day.name, days, *day.box);
  SelectListItem(*ui_->cmbSpan, ValueOrDefault(queue.GetValue(QueueKey::kSpan), "hour"));
  servers_.Fill(queue.GetValue(QueueKey::kQueueByDefaultServers));
  filter_.Fill(queue.GetValue(QueueKey::kQueueByDefaultFilter));
  filter_.ToggleQueueFilterButtons();
}

// The value of an option's setting that chooses it; a word that is none of them chooses nothing.
std::string QueuesPage::ChosenValue(const Section& queue, std::string_view key) {
  const std::string stored = queue.GetValue(key);
  if (key == QueueKey::kFrequency) return ValueOrDefault(stored, "daily");
  if (key == QueueKey::kOccursType) return ValueOrDefault(stored, "once") == "once" ? "once" : "every";
  if (key == QueueKey::kHasEndDate) return stored == "1" ? "1" : "0";
  return FoldCase(ValueOrDefault(stored, "none"));
}

void QueuesPage::FillOptions(const Section& queue) {
  Enable();  // the groups of the queue shown before must not linger
  for (const QRadioButton* initial : {ui_->optDaily, ui_->optQueueNone})  // in case that none is chosen
    tags_.ToggleControls(ControlTags::TagOf(*initial));
  for (const OptionRow& option : options_) {
    const bool stays = std::string_view(option.key) == QueueKey::kFrequency && !HasKnownFrequency(queue);
    const bool isChosen = stays ? option.button->isChecked() : ChosenValue(queue, option.key) == option.value;
    SetChosen(*option.button, isChosen);
    if (isChosen) ApplyOption(option);
  }
}

void QueuesPage::ToggleDay(const std::string& day, const std::string& days, QCheckBox& box) {
  box.setChecked(FoldCase(days).find(day) != std::string::npos);
}

// What the controls show of a setting; nothing when no option stands for it.
std::optional<std::string> QueuesPage::ShownValue(std::string_view key) const {
  for (const OptionRow& option : options_)
    if (option.key == key && option.button->isChecked()) return option.value;
  for (const TextRow& row : texts_)
    if (row.key == key) return TextOf(*row.control);
  for (const PickerRow& row : pickers_)
    if (row.key == key) return row.control->ValueText();
  if (key == QueueKey::kSpan) return ui_->cmbSpan->currentText().toStdString();
  return std::nullopt;
}

void QueuesPage::StoreShown() {
  const Section& queue = *session_.CurrentQueue();
  Steps steps;
  for (const char* key : kShownKeys) {
    const bool isForeign = std::string_view(key) == QueueKey::kFrequency && !HasKnownFrequency(queue);
    const auto value = isForeign ? std::nullopt : ShownValue(key);
    if (value) steps.Run([&] { session_.PersistQueueSetting(key, *value); });
  }
  steps.Run([this] { servers_.StoreSelection(); });
  steps.RaiseFailures();
}

}  // namespace pellorin
