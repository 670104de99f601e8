// Shows a topic of a compiled help file, as the system's help viewer does.
#pragma once

#include <QWidget>
#include <string>

namespace pellorin {

class HelpViewer {
 public:
  virtual ~HelpViewer() = default;
  // `file` is a full path, `topic` a page inside it, with or without an anchor.
  virtual void ShowTopic(QWidget& owner, const std::string& file, const std::string& topic) = 0;
};

}  // namespace pellorin
