#include "ui/queues/QueueFilterEditor.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <utility>

#include "base/Text.h"
#include "config/SettingKeys.h"
#include "ui/dialogs/frmRegEx.h"

namespace pellorin {
namespace {

constexpr const char* kFields =
    "Recipients,CopyRecipients,BlindCopyRecipients,Subject,Message,CallingSQL,Query";
constexpr const char* kLineSeparator = "###";

}  // namespace

QueueFilterEditor::QueueFilterEditor(const Controls& controls, UserMessages& messages, GuardedEvents& events,
                                     SettingsForm& form, std::function<void(QWidget&)> showHelp)
    : controls_(controls), messages_(messages), events_(events), form_(form), showHelp_(std::move(showHelp)) {
  events_.OnSelection(controls_.lines, [this] { ToggleQueueFilterButtons(); });
  events_.OnClick(controls_.add, [this] { btnAddQueueFilter_Click(); });
  events_.OnClick(controls_.edit, [this] { btnEditQueueFilter_Click(); });
  events_.OnClick(controls_.remove, [this] { btnDeleteQueueFilter_Click(); });
  controls_.lines->installEventFilter(this);
  controls_.lines->viewport()->installEventFilter(this);
}

void QueueFilterEditor::Fill(const std::string& filter) {
  const QSignalBlocker blocker(controls_.lines);
  controls_.lines->clear();
  for (const std::string& line : SplitAt(kLineSeparator, filter))
    controls_.lines->addItem(QString::fromStdString(line));
}

QListWidgetItem* QueueFilterEditor::Chosen() const {
  const auto selected = controls_.lines->selectedItems();
  return selected.isEmpty() ? nullptr : selected.front();
}

void QueueFilterEditor::ToggleQueueFilterButtons() {
  const bool isChosen = Chosen() != nullptr;
  controls_.edit->setEnabled(isChosen);
  controls_.remove->setEnabled(isChosen);
}

// Returns the new line, or the empty text when the user did not save.
std::string QueueFilterEditor::ShowQueueFilterForm(const std::string& field, const std::string& value) {
  frmRegEx dialog(controls_.lines->window(), showHelp_);
  dialog.AddFields(kFields);
  dialog.SetField(field);
  dialog.SetValue(value);
  dialog.exec();
  return dialog.DialogResult() == "Save" ? dialog.Field() + "=" + dialog.Value() : std::string();
}

void QueueFilterEditor::SaveFilter() {
  std::string filter;
  for (int row = 0; row < controls_.lines->count(); ++row)
    filter += (row == 0 ? "" : kLineSeparator) + controls_.lines->item(row)->text().toStdString();
  form_.Store(QueueKey::kQueueByDefaultFilter, filter);
}

void QueueFilterEditor::btnAddQueueFilter_Click() {
  const std::string line = ShowQueueFilterForm("", "");
  if (!line.empty()) {
    controls_.lines->addItem(QString::fromStdString(line));
    controls_.lines->scrollToBottom();
  }
  SaveFilter();
}

void QueueFilterEditor::btnEditQueueFilter_Click() {
  QListWidgetItem* chosen = Chosen();
  if (chosen == nullptr) return;
  const std::string shown = chosen->text().toStdString();
  const std::size_t separator = shown.find('=');
  const bool hasValue = separator != std::string::npos;  // else the whole line is the field
  const std::string line =
      ShowQueueFilterForm(shown.substr(0, separator), hasValue ? shown.substr(separator + 1) : "");
  if (!line.empty()) chosen->setText(QString::fromStdString(line));
  SaveFilter();
}

void QueueFilterEditor::btnDeleteQueueFilter_Click() {
  QListWidgetItem* chosen = Chosen();
  if (chosen == nullptr) return;
  if (messages_.Show({.text = "Are you sure you want to delete this filter?",
                      .title = "Confirm deletion",
                      .buttons = MessageButtons::YesNo}) != Answer::Yes)
    return;
  const auto quiet = events_.KeepQuiet();
  delete chosen;
  controls_.lines->clearSelection();  // else the list chooses a neighbour, and a second press deletes it
  controls_.lines->setFocus();
  ToggleQueueFilterButtons();
  SaveFilter();
}

bool QueueFilterEditor::eventFilter(QObject* watched, QEvent* event) {
  if (watched == controls_.lines && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isPlain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    return isPlain && HandleKey(key->key());
  }
  if (watched == controls_.lines->viewport() && event->type() == QEvent::MouseButtonDblClick &&
      static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
    HandleKey(Qt::Key_Return);
    return true;
  }
  return false;
}

// A disabled button ignores its click.
bool QueueFilterEditor::HandleKey(int key) {
  switch (key) {
    case Qt::Key_Insert:
      controls_.add->click();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      (Chosen() == nullptr ? controls_.add : controls_.edit)->click();
      return true;
    case Qt::Key_Delete:
      controls_.remove->click();
      return true;
    default:
      return false;
  }
}

}  // namespace pellorin
