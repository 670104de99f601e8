// The help viewer of an installation that cannot show help files: shows a box that names the file.
#pragma once

#include "base/UserMessages.h"
#include "platform/FileOperations.h"
#include "ui/boxes/HelpViewer.h"

namespace pellorin {

class HelpFileBox : public HelpViewer {
 public:
  HelpFileBox(FileOperations& files, UserMessages& messages) : files_(files), messages_(messages) {}
  void ShowTopic(QWidget& owner, const std::string& file, const std::string& topic) override;

 private:
  FileOperations& files_;
  UserMessages& messages_;
};

}  // namespace pellorin
