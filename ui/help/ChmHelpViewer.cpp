#include "ui/help/ChmHelpViewer.h"

namespace pellorin {

void ChmHelpViewer::ShowTopic(QWidget& owner, const std::string& file, const std::string& topic) {
  std::string problem;
  if (files_.Status(file).kind == FileKind::Missing) {
    problem = "The help file is not installed:\r\n" + file;
  } else {
    if (window_ == nullptr) window_ = new HelpWindow;
    problem = window_->Show(file, topic);
  }
  if (problem.empty())
    window_->PutInFrontOf(owner);
  else
    messages_.Show({.text = problem, .icon = MessageIcon::Information});
}

}  // namespace pellorin
