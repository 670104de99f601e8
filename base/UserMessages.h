// The messages and questions to the user, without widgets. Texts are plain UTF-8, never markup. Line breaks
// are CR LF.
#pragma once

#include <optional>
#include <string>
#include <vector>

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
  // The user's text, unchanged. Empty when cancelled. The prompt starts empty; a suggestion is offered once
  // the user has typed its beginning.
  virtual std::string AskForText(const std::string& title, const std::string& prompt,
                                 const std::vector<std::string>& suggestions) = 0;
};

}  // namespace pellorin
