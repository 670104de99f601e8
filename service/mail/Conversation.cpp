#include "service/mail/Conversation.h"

#include "base/Utf16.h"

namespace pellorin {

void Conversation::Add(ConversationLine::Kind kind, const std::string& text) {
  if (lines_.size() > kMostLines) return;
  const auto now = std::chrono::system_clock::now();
  if (lines_.size() == kMostLines) {
    lines_.push_back({now, ConversationLine::Kind::Note, "The rest is not shown."});
    return;
  }
  std::string shown = Shortened(text, kLongestLine);
  for (char& character : shown)
    if (static_cast<unsigned char>(character) < ' ' || character == '\x7F') character = ' ';
  lines_.push_back({now, kind, shown});
}

}  // namespace pellorin
