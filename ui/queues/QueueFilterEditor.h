// The filter of the shown queue: a list of lines "Field=expression" and its buttons Add, Edit and Delete. The
// list mirrors the setting "queuebydefaultfilter", whose lines are joined by "###" with nothing escaped.
//
// In the list, Insert adds a line and Delete deletes the chosen one. Enter or a double-click edits the chosen
// line, or adds one if none is chosen.
#pragma once

#include <QListWidget>
#include <QObject>
#include <QPushButton>
#include <functional>
#include <string>

#include "ui/boxes/GuardedEvents.h"
#include "ui/pages/SettingsForm.h"

namespace pellorin {

class QueueFilterEditor : public QObject {
  Q_OBJECT

 public:
  struct Controls {
    QListWidget* lines;
    QPushButton* add;
    QPushButton* edit;
    QPushButton* remove;
  };

  QueueFilterEditor(const Controls& controls, UserMessages& messages, GuardedEvents& events,
                    SettingsForm& form, std::function<void(QWidget& owner)> showHelp);

  void Fill(const std::string& filter);  // shows a stored text; stores nothing
  void ToggleQueueFilterButtons();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QListWidgetItem* Chosen() const;
  std::string ShowQueueFilterForm(const std::string& field, const std::string& value);
  void SaveFilter();
  bool HandleKey(int key);

  void btnAddQueueFilter_Click();
  void btnEditQueueFilter_Click();
  void btnDeleteQueueFilter_Click();

  Controls controls_;
  UserMessages& messages_;
  GuardedEvents& events_;
  SettingsForm& form_;
  std::function<void(QWidget& owner)> showHelp_;  // of the dialog
};

}  // namespace pellorin
