// The user of a test: expects boxes and prompts in order, compares each to the letter and answers it. Any
// other box fails the test with its text.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "base/UserMessages.h"

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
  void WillShow(const Message& message, Answer answer = Answer::Ok) {
    expected_.push_back({Describe(message), answer, {}});
  }
  void WillShowSome() { expected_.push_back({{}, Answer::Ok, {}}); }  // the test looks at Last
  void WillAsk(const std::string& title, const std::string& prompt, const std::string& answer) {
    expected_.push_back({"[" + title + "] input\n" + prompt, Answer::Ok, answer});
  }
  const Message& Last() const { return last_; }
  std::vector<std::string> suggested;  // with the last prompt
  std::function<void()> onShow;        // what the test looks at while a box is open
  void ExpectNoMore() {                // that every expected box was shown
    for (const Box& box : expected_) ADD_FAILURE() << "a box was not shown: " << box.description;
    expected_.clear();
  }

  Answer Show(const Message& message) override {
    last_ = message;
    if (onShow) onShow();
    return Take(Describe(message)).answer;
  }
  std::string AskForText(const std::string& title, const std::string& prompt,
                         const std::vector<std::string>& suggestions) override {
    suggested = suggestions;
    return Take("[" + title + "] input\n" + prompt).typed;
  }

 private:
  struct Box {
    std::string description;  // empty: any
    Answer answer = Answer::Cancel;
    std::string typed;
  };

  static std::string Describe(const Message& message) {
    const auto number = [](auto value) { return std::to_string(static_cast<int>(value)); };
    return "[" + message.title + "] icon " + number(message.icon) + ", buttons " + number(message.buttons) +
           ", default " + (message.defaultButton ? number(*message.defaultButton) : "none") + "\n" +
           message.text;
  }
  Box Take(const std::string& description) {
    if (expected_.empty()) {
      ADD_FAILURE() << "an unexpected box was shown: " << description;
      return {};
    }
    const Box box = expected_.front();
    expected_.pop_front();
    if (!box.description.empty()) {
      EXPECT_EQ(description, box.description);
    }
    return box;
  }

  std::deque<Box> expected_;
  Message last_;
};

}  // namespace pellorin::test
