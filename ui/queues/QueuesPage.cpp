#include "ui/queues/QueuesPage.h"

#include <algorithm>
#include <utility>

#include "config/SectionNames.h"
#include "config/SettingKeys.h"
#include "ui/boxes/FailureMessage.h"
#include "ui_QueuesPage.h"

namespace pellorin {
namespace {

std::unique_ptr<Ui::frmQueues> MakeControls(QFrame& page) {
  auto controls = std::make_unique<Ui::frmQueues>();
  controls->setupUi(&page);
  return controls;
}

}  // namespace

QueuesPage::QueuesPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags,
                       const LocaleConventions& locale, std::function<void(QWidget&)> showFilterHelp)
    : SectionPage(SectionType::Queue, session, messages, tags),
      ui_(MakeControls(*this)),
      binding_(messages,
               {.section = [this] { return session_.CurrentQueue(); },
                .persist = [this](const std::string& key,
                                  const std::string& value) { session_.PersistQueueSetting(key, value); },
                .refill = [this] { Fill(); }}),
      servers_(*ui_->lstQueueApplServers, *ui_->lblQueueServersCount, session),
      filter_(
          {ui_->lstQueueFilter, ui_->btnAddQueueFilter, ui_->btnEditQueueFilter, ui_->btnDeleteQueueFilter},
          messages, binding_, std::move(showFilterHelp)) {
  UseSelector(*ui_->cmbQueues);
  MakeTables();
  for (const PickerRow& row : pickers_) row.control->SetLocaleConventions(locale);
  ui_->lblQueueConnection->show();  // room for it from the start: the window must not grow when it appears
  setMinimumHeight(layout()->minimumSize().height());
  ui_->lblQueueConnection->hide();
  BindControls();
}

QueuesPage::~QueuesPage() = default;

void QueuesPage::MakeTables() {
  options_ = {{ui_->optDaily, QueueKey::kFrequency, "daily"},
              {ui_->optWeekly, QueueKey::kFrequency, "weekly"},
              {ui_->optOccursOnce, QueueKey::kOccursType, "once"},
              {ui_->optOccursEvery, QueueKey::kOccursType, "every"},
              {ui_->optEndDate, QueueKey::kHasEndDate, "1"},
              {ui_->optNoEndDate, QueueKey::kHasEndDate, "0"},
              {ui_->optQueueNone, QueueKey::kQueueByDefault, "none"},
              {ui_->optQueueAll, QueueKey::kQueueByDefault, "all"},
              {ui_->optQueueFilter, QueueKey::kQueueByDefault, "filter"}};
  texts_ = {{ui_->txtEvery, QueueKey::kEvery},
            {ui_->txtOccursEvery, QueueKey::kOccursEvery},
            {ui_->txtQueueTitle, QueueKey::kTitle}};
  pickers_ = {{ui_->txtOccursOnce, QueueKey::kOccursOnce},
              {ui_->txtStartTime, QueueKey::kStartTime},
              {ui_->txtEndTime, QueueKey::kEndTime},
              {ui_->txtStartDate, QueueKey::kStartDate},
              {ui_->txtEndDate, QueueKey::kEndDate}};
  days_ = {{ui_->chkMonday, "monday"},     {ui_->chkTuesday, "tuesday"}, {ui_->chkWednesday, "wednesday"},
           {ui_->chkThursday, "thursday"}, {ui_->chkFriday, "friday"},   {ui_->chkSaturday, "saturday"},
           {ui_->chkSunday, "sunday"}};
}

void QueuesPage::BindControls() {
  for (const OptionRow& option : options_)
    binding_.OnClick(option.button, [this, &option] { Choose(option); });
  for (const TextRow& row : texts_) binding_.Bind(row);
  for (const PickerRow& row : pickers_) {
    binding_.AddField(row.key, row.control);
    binding_.OnEdit(row.control, [this, row] { binding_.Persist(row.key, row.control->ValueText()); });
  }
  for (const DayRow& day : days_) binding_.OnClick(day.box, [this] { PersistDays(); });
  binding_.OnChoice(ui_->cmbSpan,
                    [this] { binding_.Persist(QueueKey::kSpan, ui_->cmbSpan->currentText().toStdString()); });
  binding_.OnSelection(ui_->lstQueueApplServers, [this] { servers_.StoreSelection(); });
  binding_.OnChoice(ui_->cmbQueues, [this] { ShowSelected(); });
  binding_.OnClick(ui_->btnAddQueue, [this] { btnAddQueue_Click(); });
  binding_.OnClick(ui_->btnDeleteQueue, [this] { btnDeleteQueue_Click(); });
  binding_.AddField(QueueKey::kDays, ui_->chkMonday);
  binding_.AddField(QueueKey::kSpan, ui_->cmbSpan);
  binding_.AddField(QueueKey::kQueueByDefaultServers, ui_->lstQueueApplServers);
  binding_.AddField(QueueKey::kQueueByDefaultFilter, ui_->lstQueueFilter);
  binding_.OnClick(ui_->btnTestQueue, [this] { emit probeRequested(); });
  connect(&session_, &ConfigurationSession::edited, this, [this] { ShowSummary(); });
  connect(&session_, &ConfigurationSession::sqlServersChanged, this, [this] {
    const Section* queue = session_.CurrentQueue();
    if (queue == nullptr || !queue->QueueProblem().empty()) return;
    if (!queue->CanBeWritten()) return servers_.Fill(queue->GetValue(QueueKey::kQueueByDefaultServers));
    RunGuarded(messages_, [this] { servers_.RefreshQueuedServers(); });
  });
}

void QueuesPage::Choose(const OptionRow& option) {
  option.button->setChecked(true);
  ApplyOption(option);
  binding_.Persist(option.key, option.value);
  if (option.button == ui_->optEndDate) binding_.Persist(QueueKey::kEndDate, ui_->txtEndDate->ValueText());
  if (option.button == ui_->optQueueNone) servers_.DeselectEach();
  if (option.button == ui_->optQueueFilter) filter_.ToggleQueueFilterButtons();
}

void QueuesPage::ApplyOption(const OptionRow& option) {
  tags_.ToggleControls(ControlTags::TagOf(*option.button));
  if (option.button == ui_->optDaily || option.button == ui_->optWeekly)
    ShowOccurance(option.button == ui_->optWeekly);
}

void QueuesPage::ShowOccurance(bool isWeekly) {
  ui_->frmOccurance->setTitle(isWeekly ? QStringLiteral("Weekly") : QStringLiteral("Daily"));
  ui_->lblEverySpan->setText(isWeekly ? QStringLiteral("Week") : QStringLiteral("Day"));
}

void QueuesPage::PersistDays() {
  std::string days;
  for (const DayRow& day : days_)
    if (day.box->isChecked()) days += (days.empty() ? "" : ",") + std::string(day.name);
  binding_.Persist(QueueKey::kDays, days);
}

void QueuesPage::ShowSecurity(const std::string& note) {
  ui_->lblQueueConnection->Say(note);
}

bool QueuesPage::ValidateQueue() {
  return ValidateCurrent("queue");
}

bool QueuesPage::IsDuplicate(const std::string& name) const {
  const auto& sections = session_.Document()->Sections();
  return std::any_of(sections.begin(), sections.end(), [&name](const auto& section) {
    return section->SectionType == SectionType::Queue && EqualIgnoringCase(section->Name, name);
  });
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
  const std::string name = messages_.AskForText("New Queue", "Please enter the name of the new queue");
  if (name.empty()) return;
  const auto refuse = [this](const std::string& text, const char* title) {
    messages_.Show({.text = text, .title = title, .icon = MessageIcon::Exclamation});
  };
  if (!IsValidQueueName(name))
    refuse("The following characters are not allowed :;*?\"<>|'`,{}[]", "Duplicate Name");
  else if (const std::string problem = QueueNameProblem(name); !problem.empty())
    refuse(problem, "Invalid Name");
  else if (IsDuplicate(name))
    refuse("A queue with this name already exists", "Duplicate Name");
  else
    AddNewQueue(name);
}

void QueuesPage::AddNewQueue(const std::string& name) {
  Section& queue = session_.Document()->AddQueue(name);
  session_.SetCurrent(SectionType::Queue, &queue);
  Selector().InsertFirst(queue);
  Enable();
  tags_.ToggleSection("Main", true);
  RunGuarded(messages_, [&] { session_.PersistQueueSetting(QueueKey::kTitle, name); });
  ShowFirst();
  ui_->txtEvery->setFocus();
  ui_->txtEvery->selectAll();
}

void QueuesPage::btnDeleteQueue_Click() {
  const Section* queue = session_.CurrentQueue();
  if (queue == nullptr) return;
  if (!Ini::CanDelete(*queue)) {
    messages_.Show({.text = "The queue " + queue->Name +
                            " cannot be deleted here, because the name holds \"|\". Please remove this file:"
                            "\r\n" +
                            queue->FilePath(),
                    .icon = MessageIcon::Exclamation});
    return;
  }
  if (messages_.Show({.text = "Do you want to delete queue " + queue->Name + "?",
                      .title = "Delete Section",
                      .buttons = MessageButtons::YesNo}) != Answer::Yes)
    return;
  // The queue goes though an instance cannot forget it. An escaped name may be that of another queue.
  if (!IsNameShared(*queue)) RunGuarded(messages_, [this] { servers_.ForgetQueue(); });
  RemoveShown();
}

}  // namespace pellorin
