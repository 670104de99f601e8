// Shows help files in one window of this program. A file that is missing or damaged gets a box that names it.
#pragma once

#include <QPointer>

#include "base/UserMessages.h"
#include "platform/FileOperations.h"
#include "ui/boxes/HelpViewer.h"
#include "ui/help/HelpWindow.h"

namespace pellorin {

class ChmHelpViewer : public HelpViewer {
 public:
  ChmHelpViewer(FileOperations& files, UserMessages& messages) : files_(files), messages_(messages) {}
  ~ChmHelpViewer() override { delete window_; }
  ChmHelpViewer(const ChmHelpViewer&) = delete;
  ChmHelpViewer& operator=(const ChmHelpViewer&) = delete;
  void ShowTopic(QWidget& owner, const std::string& file, const std::string& topic) override;

 private:
  FileOperations& files_;
  UserMessages& messages_;
  QPointer<HelpWindow> window_;  // belongs to its owner; made when help is first asked for
};

}  // namespace pellorin
