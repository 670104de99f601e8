// Shows messages as real message boxes and prompts as real input boxes, over the window that owns them.
#pragma once

#include <QPointer>
#include <QWidget>

#include "base/UserMessages.h"

namespace pellorin {

class QtUserMessages : public UserMessages {
 public:
  void SetOwner(QWidget* owner) { owner_ = owner; }
  Answer Show(const Message& message) override;
  std::string AskForText(const std::string& title, const std::string& prompt,
                         const std::vector<std::string>& suggestions) override;

 private:
  QPointer<QWidget> owner_;
};

}  // namespace pellorin
