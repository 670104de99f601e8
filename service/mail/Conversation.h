// What was said during one delivery, line by line, for the user to read. No line holds a secret.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "service/MailComponent.h"

namespace pellorin {

// Keeps at most kMostLines lines of at most kLongestLine bytes, without control characters.
class Conversation {
 public:
  static constexpr std::size_t kMostLines = 500;
  static constexpr std::size_t kLongestLine = 1000;

  void Add(ConversationLine::Kind kind, const std::string& text);
  const std::vector<ConversationLine>& Lines() const { return lines_; }

 private:
  std::vector<ConversationLine> lines_;
};

}  // namespace pellorin
