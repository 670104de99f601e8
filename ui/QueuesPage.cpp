#include "ui/QueuesPage.h"

#include "ui_QueuesPage.h"

namespace pellorin {

QueuesPage::QueuesPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags)
    : SectionPage(SectionType::Queue, session, messages, tags),
      ui_(std::make_unique<Ui::frmQueues>()),
      binding_(messages) {
  ui_->setupUi(this);
  UseSelector(*ui_->cmbQueues);
  binding_.OnChoice(ui_->cmbQueues, [this] { ShowSelected(); });
}

QueuesPage::~QueuesPage() = default;

void QueuesPage::ShowSelected() {
  Section* section = Selected();
  if (section == nullptr) return;
  session_.SetCurrent(SectionType::Queue, section);
  ShowProblem(section->QueueProblem());
}

void QueuesPage::ShowProblem(const std::string& problem) {
  ui_->lblQueueProblem->setText(
      QString::fromStdString("The definition of this queue cannot be used:\r\n" + problem));
  ui_->lblQueueProblem->setVisible(!problem.empty());
}

void QueuesPage::StartBrandNew() {
  SectionPage::StartBrandNew();
  ShowProblem("");
}

}  // namespace pellorin
