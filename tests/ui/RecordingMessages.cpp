#include "tests/ui/RecordingMessages.h"

#include <gtest/gtest.h>

namespace pellorin::test {
namespace {

std::string Describe(const Message& message) {
  static constexpr const char* kIcons[] = {"no icon", "information", "exclamation", "critical"};
  static constexpr const char* kButtons[] = {"OK", "Yes/No", "Yes/No/Cancel"};
  static constexpr const char* kAnswers[] = {"OK", "Yes", "No", "Cancel"};
  std::string text = "[" + message.title + "] ";
  text += kIcons[static_cast<int>(message.icon)];
  text += std::string(", ") + kButtons[static_cast<int>(message.buttons)];
  if (message.defaultButton)
    text += std::string(", default ") + kAnswers[static_cast<int>(*message.defaultButton)];
  return text + "\n" + message.text;
}

std::string Describe(const std::string& title, const std::string& prompt) {
  return "[" + title + "] input\n" + prompt;
}

}  // namespace

void RecordingMessages::WillShow(const Message& message, Answer answer) {
  expected_.push_back({Describe(message), answer, {}});
}

void RecordingMessages::WillShowSome(Answer answer) {
  expected_.push_back({{}, answer, {}});
}

void RecordingMessages::WillAsk(const std::string& title, const std::string& prompt,
                                const std::string& answer) {
  expected_.push_back({Describe(title, prompt), Answer::Ok, answer});
}

void RecordingMessages::ExpectNoMore() {
  for (const Box& box : expected_) ADD_FAILURE() << "a box was not shown: " << box.description;
  expected_.clear();
}

RecordingMessages::Box RecordingMessages::Take(const std::string& description) {
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

Answer RecordingMessages::Show(const Message& message) {
  last_ = message;
  return Take(Describe(message)).answer;
}

std::string RecordingMessages::AskForText(const std::string& title, const std::string& prompt) {
  return Take(Describe(title, prompt)).typed;
}

}  // namespace pellorin::test
