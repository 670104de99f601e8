#include "ui/queues/QueuesPage.h"

#include <QDateTime>
#include <algorithm>
#include <utility>

#include "config/DateTimeWriting.h"
#include "config/NextRuns.h"
#include "config/ScheduleSummary.h"
#include "config/SectionNames.h"
#include "config/SettingKeys.h"
#include "config/ValueOrDefault.h"
#include "queues/ui_QueuesPage.h"
#include "ui/controls/LabelColumns.h"
#include "ui/controls/QtDates.h"

namespace pellorin {
namespace {

using WhenShown = SettingsForm::WhenShown;

std::unique_ptr<Ui::QueuesPage> MakeControls(QFrame& page) {
  auto controls = std::make_unique<Ui::QueuesPage>();
  controls->setupUi(&page);
  AlignLabelColumns(page);
  return controls;
}

std::string PresentTime() {
  return QTime::currentTime().toString(QStringLiteral("HH:mm")).toStdString();
}

// Nothing for a word that the service does not know.
std::optional<std::string> KnownFrequency(const std::string& stored) {
  const std::string frequency = ValueOrDefault(stored, "daily");
  return frequency == "daily" || frequency == "weekly" ? std::optional(frequency) : std::nullopt;
}

std::string OccursTypeOf(const std::string& stored) {
  return ValueOrDefault(stored, "once") == "once" ? "once" : "every";
}

}  // namespace

QueuesPage::QueuesPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags,
                       const LocaleConventions& locale, std::function<void(QWidget&)> showFilterHelp)
    : SectionPage(SectionType::Queue, session, messages, tags,
                  QStringLiteral("No queue yet. Press Add to create the first one.")),
      ui_(MakeControls(*this)),
      locale_(locale),
      servers_(*ui_->lstQueueApplServers, *ui_->lblQueueServersCount, session),
      filter_(
          {ui_->lstQueueFilter, ui_->btnAddQueueFilter, ui_->btnEditQueueFilter, ui_->btnDeleteQueueFilter},
          messages, events_, form_, std::move(showFilterHelp)) {
  UseSelector(*ui_->cmbQueues);
  for (const auto& [notice, lines] : {std::pair(ui_->lblScheduleSummary, 2), {ui_->lblNextRuns, 6}}) {
    notice->setMinimumHeight(lines * fontMetrics().lineSpacing());
    notice->KeepPlace();
  }
  AddScheduleRows();
  AddQueueByDefaultRow();
  BindControls();
}

QueuesPage::~QueuesPage() = default;

// In the order in which a new definition holds them.
void QueuesPage::AddScheduleRows() {
  const auto today = [this] { return WriteDateTime({DayOf(QDate::currentDate()), std::nullopt}, locale_); };
  const auto always = [](const char* text) { return [text] { return std::string(text); }; };
  form_.Add(
      OptionRow{.key = QueueKey::kFrequency,
                .options = {{ui_->optDaily, "daily"}, {ui_->optWeekly, "weekly"}},
                .valueOf = KnownFrequency,
                .whenNone = ui_->optDaily,
                .onShown = [this](const Option& option) { ShowOccurance(option.button == ui_->optWeekly); }},
      WhenShown::Stores);
  form_.Add(TextRow{ui_->txtEvery, QueueKey::kEvery, "1"}, WhenShown::Stores);
  form_.Add(OptionRow{.key = QueueKey::kOccursType,
                      .options = {{ui_->optOccursOnce, "once"}, {ui_->optOccursEvery, "every"}},
                      .valueOf = OccursTypeOf},
            WhenShown::Stores);
  form_.Add(PickerRow{ui_->txtOccursOnce, QueueKey::kOccursOnce, PresentTime}, WhenShown::Stores);
  form_.Add(TextRow{ui_->txtOccursEvery, QueueKey::kOccursEvery, "1"}, WhenShown::Stores);
  form_.Add(ListRow{ui_->cmbSpan, QueueKey::kSpan}, WhenShown::Stores);
  form_.Add(PickerRow{ui_->txtStartTime, QueueKey::kStartTime, always("12:00 AM")}, WhenShown::Stores);
  form_.Add(PickerRow{ui_->txtStartDate, QueueKey::kStartDate, today}, WhenShown::Stores);
  form_.Add(PickerRow{ui_->txtEndTime, QueueKey::kEndTime, always("11:59:59 PM")}, WhenShown::Stores);
  form_.Add(PickerRow{ui_->txtEndDate, QueueKey::kEndDate, today}, WhenShown::Stores);
  form_.Add(OptionRow{.key = QueueKey::kHasEndDate,
                      .options = {{ui_->optEndDate, "1"}, {ui_->optNoEndDate, "0"}},
                      .valueOf = [](const std::string& stored) { return stored == "1" ? "1" : "0"; },
                      .onChosen =
                          [this](const Option& option) {
                            if (option.button == ui_->optEndDate)
                              form_.Store(QueueKey::kEndDate, ui_->txtEndDate->ValueText());
                          }},
            WhenShown::Stores);
  form_.Add(TextRow{ui_->txtQueueTitle, QueueKey::kTitle}, WhenShown::Stores);
  form_.Add(DaysRow{QueueKey::kDays,
                    {{ui_->chkMonday, "monday"},
                     {ui_->chkTuesday, "tuesday"},
                     {ui_->chkWednesday, "wednesday"},
                     {ui_->chkThursday, "thursday"},
                     {ui_->chkFriday, "friday"},
                     {ui_->chkSaturday, "saturday"},
                     {ui_->chkSunday, "sunday"}}});
  for (DateTimePicker* picker : findChildren<DateTimePicker*>()) picker->SetLocaleConventions(locale_);
}

void QueuesPage::AddQueueByDefaultRow() {
  form_.Add(
      OptionRow{.key = QueueKey::kQueueByDefault,
                .options = {{ui_->optQueueNone, "none"},
                            {ui_->optQueueAll, "all"},
                            {ui_->optQueueFilter, "filter"}},
                .valueOf = [](const std::string& stored) { return FoldCase(ValueOrDefault(stored, "none")); },
                .whenNone = ui_->optQueueNone,
                .onChosen =
                    [this](const Option& option) {
                      if (option.button == ui_->optQueueNone) servers_.DeselectEach();
                      if (option.button == ui_->optQueueFilter) filter_.ToggleQueueFilterButtons();
                    }},
      WhenShown::Stores);
  form_.AddField(QueueKey::kQueueByDefaultServers, ui_->lstQueueApplServers);
  form_.AddField(QueueKey::kQueueByDefaultFilter, ui_->lstQueueFilter);
}

void QueuesPage::BindControls() {
  events_.OnSelection(ui_->lstQueueApplServers, [this] { servers_.StoreSelection(); });
  events_.OnClick(ui_->btnAddQueue, [this] { btnAddQueue_Click(); });
  events_.OnClick(ui_->btnDeleteQueue, [this] { btnDeleteQueue_Click(); });
  events_.OnClick(ui_->btnTestQueue, [this] { emit probeRequested(); });
  connect(&session_, &ConfigurationSession::edited, this, [this] { ShowSummary(); });
  connect(&session_, &ConfigurationSession::sqlServersChanged, this, [this] { RefreshServers(); });
}

void QueuesPage::RefreshServers() {
  const Section* queue = session_.CurrentQueue();
  if (queue == nullptr || !queue->QueueProblem().empty()) return;
  if (queue->CanBeWritten())
    RunGuarded(messages_, [this] { servers_.RefreshQueuedServers(); });
  else
    servers_.Fill(queue->GetValue(QueueKey::kQueueByDefaultServers));
}

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
  if (!KnownFrequency(queue.GetValue(QueueKey::kFrequency)) && !IsLeadingToFault())
    messages_.Show({.text = "Incorrect 'Occurs' value. Possible values are Daily or Weekly.",
                    .icon = MessageIcon::Critical});
}

void QueuesPage::Fill() {
  servers_.Clear();  // the last queue's selection is not this one's
  SectionPage::Fill();
  const Section& queue = *session_.CurrentQueue();
  const auto quiet = events_.KeepQuiet();
  servers_.Fill(queue.GetValue(QueueKey::kQueueByDefaultServers));
  filter_.Fill(queue.GetValue(QueueKey::kQueueByDefaultFilter));
  filter_.ToggleQueueFilterButtons();
}

void QueuesPage::StoreShown() {
  Steps steps;
  steps.Run([this] { form_.StoreShown(); });
  steps.Run([this] { servers_.StoreSelection(); });
  steps.RaiseFailures();
}

// The problem takes the place of the schedule in words, so that the window keeps its height.
void QueuesPage::ShowProblem(const std::string& problem) {
  ui_->lblQueueProblem->Say(problem.empty() ? ""
                                            : "The definition of this queue cannot be used:\r\n" + problem);
  ui_->fraSchedule->setVisible(problem.empty());
}

// Only these controls stay enabled: the queue can be deleted or left.
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
  std::string words, runs;
  if (queue != nullptr && queue->QueueProblem().empty()) {
    const QDateTime now = QDateTime::currentDateTime();
    const auto today = DayOf(now.date());
    words = ScheduleSummary(*queue, locale_, today);
    runs =
        NextRunsInWords(queue->Settings(), locale_,
                        std::chrono::sys_days(today) + std::chrono::seconds(QTime(0, 0).secsTo(now.time())));
  }
  ui_->lblScheduleSummary->Say(words);
  ui_->lblNextRuns->Say(runs);
}

void QueuesPage::ShowOccurance(bool isWeekly) {
  ui_->frmOccurance->setTitle(isWeekly ? QStringLiteral("Weekly") : QStringLiteral("Daily"));
  ui_->lblEverySpan->setText(isWeekly ? QStringLiteral("Week") : QStringLiteral("Day"));
}

void QueuesPage::ShowSecurity(const std::string& note) {
  ui_->lblQueueConnection->Say(note);
}

bool QueuesPage::ValidateQueue() {
  return ValidateCurrent("queue");
}

bool QueuesPage::IsNameShared(const Section& queue) const {
  const auto& sections = session_.Document()->Sections();
  return std::any_of(sections.begin(), sections.end(), [&queue](const auto& section) {
    return section.get() != &queue && section->SectionType == SectionType::Queue &&
           section->Name == queue.Name;
  });
}

void QueuesPage::btnAddQueue_Click() {
  if (!CanAdd()) return;
  const std::string name = messages_.AskForText("New Queue", "Please enter the name of the new queue", {});
  if (name.empty()) return;
  if (!IsValidQueueName(name))
    Refuse("Duplicate Name", "The following characters are not allowed :;*?\"<>|'`,{}[]");
  else if (const std::string problem = QueueNameProblem(name); !problem.empty())
    Refuse("Invalid Name", problem);
  else if (session_.Document()->HoldsName(SectionType::Queue, name))
    Refuse("Duplicate Name", "A queue with this name already exists");
  else
    AddNewQueue(name);
}

void QueuesPage::AddNewQueue(const std::string& name) {
  ShowAdded(session_.Document()->AddQueue(name));
  RunGuarded(messages_, [&] { session_.PersistQueueSetting(QueueKey::kTitle, name); });
  ShowFirst();
  ui_->txtEvery->setFocus();
  ui_->txtEvery->selectAll();
}

void QueuesPage::btnDeleteQueue_Click() {
  const Section* queue = session_.CurrentQueue();
  if (queue == nullptr) return;
  if (!Ini::CanDelete(*queue)) {
    Refuse(kProgramTitle,
           "The queue " + queue->Name +
               " cannot be deleted here, because the name holds \"|\". Please remove this file:\r\n" +
               queue->FilePath());
    return;
  }
  if (messages_.Show({.text = "Do you want to delete queue " + queue->Name + "?",
                      .title = "Delete Section",
                      .buttons = MessageButtons::YesNo}) != Answer::Yes)
    return;
  // The queue is deleted even if an instance cannot forget it. Another queue may have the same shown name.
  if (!IsNameShared(*queue)) RunGuarded(messages_, [this] { servers_.ForgetQueue(); });
  RemoveShown();
}

}  // namespace pellorin
