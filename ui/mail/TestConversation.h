// Shows what was said during the last test of a mail server, line by line. Its parts are made when there is
// something to show for the first time.
#pragma once

#include <QFrame>
#include <QPlainTextEdit>
#include <vector>

#include "service/MailComponent.h"

namespace pellorin {

class TestConversation : public QFrame {
 public:
  explicit TestConversation(QWidget* parent = nullptr);

  // Tab leads to it from `before`.
  void Show(const std::vector<ConversationLine>& lines, QWidget& before);

 private:
  void Build(QWidget& before);

  QPlainTextEdit* text_ = nullptr;
};

}  // namespace pellorin
