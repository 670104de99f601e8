// The list of SQL Server instances whose mail enters the shown queue by default. Each entry refers to a
// section. The selection is kept in two places: in the queue's "queuebydefaultservers", and as the queue's
// name in "Queues" of each instance. This class alone writes "Queues". A section that cannot be written
// changes only when the user changes its entry or deletes the queue.
#pragma once

#include <QLabel>
#include <QListWidget>
#include <string>
#include <vector>

#include "ui/pages/ConfigurationSession.h"

namespace pellorin {

class QueuedServersList {
 public:
  // `count` shows how many are selected: "3 of 60".
  QueuedServersList(QListWidget& list, QLabel& count, ConfigurationSession& session)
      : list_(list), count_(count), session_(session) {}

  // Fill and Clear run no handler and store nothing.
  void Fill(const std::string& servers);  // lists all instances and selects those in this text
  void Clear();

  // Lists all instances, selects those that the current queue's setting names, and stores the selection.
  void RefreshQueuedServers();
  // Removes the current queue's name from all instances.
  void ForgetQueue();
  // Stores the selection in the current queue and in all instances. Goes on when an instance cannot take it,
  // and raises all failures as one NumberedError at the end.
  void StoreSelection();
  void DeselectEach();  // stores after each one

 private:
  void Select(const std::vector<std::string>& servers);
  void ShowChosen(const QItemSelection& chosen);
  void ShowCount();

  QListWidget& list_;
  QLabel& count_;
  ConfigurationSession& session_;
};

}  // namespace pellorin
