// How a running probe looks: the window is busy but stays painted. It takes no input except Escape, which
// ends a mail that is being sent.
#pragma once

#include <QObject>

#include "ui/boxes/BusyWindow.h"
#include "ui/probes/Probe.h"

namespace pellorin {

class WatchedWork : public QObject, public ProbeWork {
 public:
  WatchedWork(QWidget& window, MailComponent& mail);
  ~WatchedWork() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  BusyWindow busy_;
  MailComponent& mail_;
  bool isCancelled_ = false;
};

}  // namespace pellorin
