// The page "Queues": the queues of the folder QUEUEDefinitions. A queue whose file cannot be used is named
// with its file and the reason.
#pragma once

#include <memory>

#include "ui/ControlBinding.h"
#include "ui/SectionPage.h"

namespace Ui {
class frmQueues;
}

namespace pellorin {

class QueuesPage : public SectionPage {
  Q_OBJECT

 public:
  QueuesPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags);
  ~QueuesPage() override;

  void ShowSelected() override;
  void StartBrandNew() override;

 private:
  void ShowProblem(const std::string& problem);

  std::unique_ptr<Ui::frmQueues> ui_;
  ControlBinding binding_;
};

}  // namespace pellorin
