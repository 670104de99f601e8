// How a running probe looks: the window is busy but stays painted, and a line says what is being done. It
// takes no input except Escape, which ends a mail that is being sent.
#pragma once

#include <QObject>

#include "ui/boxes/BusyWindow.h"
#include "ui/controls/NoticeLine.h"
#include "ui/probes/Probe.h"

namespace pellorin {

class WatchedWork : public QObject, public ProbeWork {
 public:
  // `line` says what is being done, and afterwards what it said before.
  WatchedWork(QWidget& window, NoticeLine& line, const std::string& doing, MailComponent& mail);
  ~WatchedWork() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  NoticeLine& line_;
  std::string saidBefore_;
  BusyWindow busy_;
  MailComponent& mail_;
  bool isCancelled_ = false;
};

}  // namespace pellorin
