// The page "Queues": shows one queue at a time and stores each edit at once. Showing a queue stores what is
// shown, so that the defaults of missing settings get stored. A queue with invalid settings cannot be left. A
// queue whose file cannot be used is shown with its file and the reason, and can only be deleted.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ui/pages/SectionPage.h"
#include "ui/queues/QueueFilterEditor.h"
#include "ui/queues/QueuedServersList.h"

namespace Ui {
class QueuesPage;
}

namespace pellorin {

class QueuesPage : public SectionPage {
  Q_OBJECT

 public:
  QueuesPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags,
             const LocaleConventions& locale, std::function<void(QWidget& owner)> showFilterHelp);
  ~QueuesPage() override;

  void StartBrandNew() override;
  void AddNewQueue(const std::string& name);
  void ShowSecurity(const std::string& note);  // of the connection that the last test made
  bool ValidateQueue();                        // reports what is invalid; true when no queue is shown

 protected:
  void Fill() override;
  void ShowCurrent() override;
  bool ValidateShown() override { return ValidateQueue(); }

 private:
  void AddScheduleRows();
  void AddQueueByDefaultRow();
  void BindControls();
  void RefreshServers();  // the instances have changed
  void ShowUnusable(const Section& queue);
  void ShowProblem(const std::string& problem);
  void ShowSummary();
  void ShowOccurance(bool isWeekly);
  void StoreShown();
  bool IsNameShared(const Section& queue) const;

  void btnAddQueue_Click();
  void btnDeleteQueue_Click();

  std::unique_ptr<Ui::QueuesPage> ui_;
  LocaleConventions locale_;
  QueuedServersList servers_;
  QueueFilterEditor filter_;
};

}  // namespace pellorin
