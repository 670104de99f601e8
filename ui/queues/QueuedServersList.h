// The list of SQL Server instances whose mail enters the shown queue by default. An entry stands for a
// section. The selection is kept in two places: in the queue's "queuebydefaultservers", and as the queue's
// name in the "Queues" of every instance's section, of which this is the only writer. A section that cannot
// be written changes only when the user changes its entry or deletes the queue.
#pragma once

#include <QLabel>
#include <QListWidget>
#include <string>
#include <vector>

#include "ui/pages/ConfigurationSession.h"

namespace pellorin {

class QueuedServersList {
 public:
  // `count` tells how many are selected: "3 of 60".
  QueuedServersList(QListWidget& list, QLabel& count, ConfigurationSession& session)
      : list_(list), count_(count), session_(session) {}

  // These run no handler and store nothing.
  void Fill(const std::string& servers);  // lists every instance and selects those of this stored text
  void Clear();

  // Fills the list with the servers that the current queue's setting names, and stores the selection.
  void RefreshQueuedServers();
  // Takes the current queue's name from all instances.
  void ForgetQueue();
  // Stores the selection into the current queue and all instances. An instance that cannot take it keeps no
  // other from it; the failures are raised as one NumberedError at the end.
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
