#include "ui/queues/QueuedServersList.h"

#include <QItemSelectionModel>
#include <QSignalBlocker>

#include "config/NameLists.h"
#include "config/SettingKeys.h"
#include "ui/boxes/FailureMessage.h"
#include "ui/pages/SectionItems.h"

namespace pellorin {
namespace {

constexpr int kChosenWhenShown = Qt::UserRole + 1;

// A section that cannot be written stays as it is, unless the user changed its entry. Saving then says why
// it cannot be written.
bool IsLeftAlone(const QListWidgetItem& entry, const Section& instance) {
  const Setting* queues = instance.GetSetting(SqlKey::kQueues);
  const bool isEdited = entry.isSelected() != entry.data(kChosenWhenShown).toBool() ||
                        (queues != nullptr && queues->HasChanges());
  return !instance.CanBeWritten() && !isEdited;
}

// Lists are split at commas, so names that contain one must be known.
std::vector<std::string> NamesWithComma(const Ini& document, SectionType type) {
  std::vector<std::string> names;
  for (const auto& section : document.Sections())
    if (section->SectionType == type && section->Name.find(',') != std::string::npos)
      names.push_back(section->DisplayName());
  return names;
}

}  // namespace

void QueuedServersList::Clear() {
  const QSignalBlocker blocker(list_);
  list_.clear();
  ShowCount();
}

void QueuedServersList::Fill(const std::string& servers) {
  Select(SplitNames(servers, NamesWithComma(*session_.Document(), SectionType::Sql)));
}

// Selects all at once, at the end: each single selection would lay out the whole list again.
void QueuedServersList::Select(const std::vector<std::string>& servers) {
  const QSignalBlocker blocker(list_);
  list_.clear();
  QItemSelection selection;
  for (const Section* section : session_.Document()->SectionsOf(SectionType::Sql)) {
    if (section->IsTwin()) continue;  // it is never written, so a queue cannot apply to it
    const std::string name = section->DisplayName();
    auto* entry = new QListWidgetItem(QString::fromStdString(name), &list_);
    entry->setData(Qt::UserRole, IdentityOf(*section));
    const QModelIndex index = list_.indexFromItem(entry);
    const bool isChosen = ArrayContains(servers, name);
    entry->setData(kChosenWhenShown, isChosen);
    if (isChosen) selection.select(index, index);
  }
  list_.selectionModel()->select(selection, QItemSelectionModel::Select);
  ShowChosen(selection);
  ShowCount();
}

// Shows as many of the chosen entries as possible, always the first of them. The keyboard starts there.
void QueuedServersList::ShowChosen(const QItemSelection& chosen) {
  list_.scrollToTop();
  if (chosen.isEmpty()) return;
  list_.selectionModel()->setCurrentIndex(chosen.first().topLeft(), QItemSelectionModel::NoUpdate);
  list_.scrollTo(chosen.last().bottomRight());
  list_.scrollTo(chosen.first().topLeft());
}

void QueuedServersList::ShowCount() {
  const auto chosen = list_.selectionModel()->selectedIndexes().size();
  const QString count =
      list_.count() == 0 ? QString() : QStringLiteral("%1 of %2").arg(chosen).arg(list_.count());
  count_.setText(count);
  // A screen reader would otherwise read the tool tip alone.
  list_.setAccessibleDescription(count.isEmpty() ? QString()
                                                 : count + QStringLiteral(" chosen. ") + list_.toolTip());
}

void QueuedServersList::RefreshQueuedServers() {
  Fill(session_.CurrentQueue()->GetValue(QueueKey::kQueueByDefaultServers));
  StoreSelection();
}

void QueuedServersList::ForgetQueue() {
  Select({});
  for (int row = 0; row < list_.count(); ++row) list_.item(row)->setData(kChosenWhenShown, true);
  StoreSelection();
}

void QueuedServersList::StoreSelection() {
  const Section* queue = session_.CurrentQueue();
  if (queue == nullptr) return;
  const ConfigurationSession::Edits edits(session_);
  const std::vector<std::string> queueNames = NamesWithComma(*session_.Document(), SectionType::Queue);
  std::vector<std::string> servers;
  Steps steps;
  for (int row = 0; row < list_.count(); ++row) {
    const QListWidgetItem& entry = *list_.item(row);
    Section* instance = SectionOf(entry.data(Qt::UserRole), *session_.Document());
    if (instance == nullptr) continue;
    const std::string queues = instance->GetValue(SqlKey::kQueues);
    if (entry.isSelected()) servers.push_back(instance->DisplayName());
    if (IsLeftAlone(entry, *instance)) continue;
    steps.Run([&] {
      session_.SetValue(*instance, SqlKey::kQueues,
                        entry.isSelected() ? WithName(queues, queue->Name, queueNames)
                                           : WithoutName(queues, queue->Name, queueNames));
    });
  }
  steps.Run([&] { session_.PersistQueueSetting(QueueKey::kQueueByDefaultServers, JoinNames(servers)); });
  ShowCount();
  steps.RaiseFailures();
}

void QueuedServersList::DeselectEach() {
  Steps steps;
  for (QListWidgetItem* entry : list_.selectedItems()) {
    {
      const QSignalBlocker blocker(list_);
      entry->setSelected(false);
    }
    steps.Run([&] { StoreSelection(); });
  }
  steps.RaiseFailures();
}

}  // namespace pellorin
