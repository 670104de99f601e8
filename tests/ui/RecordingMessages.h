// The user of a test: expects boxes and prompts in order, compares each to the letter and answers it. Any
// other box fails the test with its text.
#pragma once

#include <deque>
#include <functional>
#include <string>

#include "platform/UserMessages.h"

namespace pellorin::test {

inline Message Plain(const std::string& text, const std::string& title = kProgramTitle) {
  return {.text = text, .title = title};
}
inline Message Warning(const std::string& title, const std::string& text) {
  return {.text = text, .title = title, .icon = MessageIcon::Exclamation};
}
inline Message Critical(const std::string& text, const std::string& title = kProgramTitle) {
  return {.text = text, .title = title, .icon = MessageIcon::Critical};
}
inline Message Question(const std::string& title, const std::string& text,
                        MessageButtons buttons = MessageButtons::YesNoCancel) {
  return {.text = text, .title = title, .buttons = buttons};
}

class RecordingMessages : public UserMessages {
 public:
  void WillShow(const Message& message, Answer answer = Answer::Ok);
  void WillShowSome(Answer answer = Answer::Ok);  // whose content the test looks at: Last
  void WillAsk(const std::string& title, const std::string& prompt, const std::string& answer);

  const Message& Last() const { return last_; }
  void ExpectNoMore();  // that every expected box was shown

  Answer Show(const Message& message) override;
  std::string AskForText(const std::string& title, const std::string& prompt) override;

 private:
  struct Box {
    std::string description;  // empty: any
    Answer answer = Answer::Cancel;
    std::string typed;
  };
  Box Take(const std::string& description);

  std::deque<Box> expected_;
  Message last_;
};

}  // namespace pellorin::test
