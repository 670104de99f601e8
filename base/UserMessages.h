// The messages and questions to the user, without widgets. Texts are plain UTF-8, never markup. Line breaks
// are CR LF.
#pragma once

#include <optional>
#include <string>

namespace pellorin {

inline constexpr const char* kProgramTitle = "PellorinConfig";

enum class MessageIcon { None, Information, Exclamation, Critical };
enum class MessageButtons { Ok, YesNo, YesNoCancel };
enum class Answer { Ok, Yes, No, Cancel };

struct Message {
  std::string text;
  std::string title = kProgramTitle;
  MessageIcon icon = MessageIcon::None;
  MessageButtons buttons = MessageButtons::Ok;
  std::optional<Answer> defaultButton = std::nullopt;  // the first button when absent
};

class UserMessages {
 public:
  virtual ~UserMessages() = default;
  virtual Answer Show(const Message& message) = 0;
  // The user's text, unchanged. Empty when cancelled.
  virtual std::string AskForText(const std::string& title, const std::string& prompt) = 0;
};

}  // namespace pellorin
