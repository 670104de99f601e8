// What the user is shown when an operation fails: description, the file's full path, what a save had written
// until then and what not, number and source. No failure of a handler ever reaches the event loop.
#pragma once

#include <exception>
#include <utility>
#include <vector>

#include "base/UserMessages.h"
#include "config/Ini.h"

namespace pellorin {

Message FailureMessage(const NumberedError& error);
// As above, with the state of a save that ended early.
Message SaveFailureMessage(const NumberedError& error, const Ini& document);

void ShowFailure(UserMessages& messages, std::exception_ptr failure);

// Runs a handler; shows a failure and returns false when it raises one.
template <typename Handler>
bool RunGuarded(UserMessages& messages, Handler&& handler) {
  try {
    std::forward<Handler>(handler)();
    return true;
  } catch (...) {
    ShowFailure(messages, std::current_exception());
    return false;
  }
}

// Several steps that are taken though one of them fails; their failures are raised as one at the end.
class Steps {
 public:
  template <typename Step>
  void Run(Step&& step) {
    try {
      std::forward<Step>(step)();
    } catch (const NumberedError& error) {
      failures_.push_back(error);
    }
  }
  void RaiseFailures() const;

 private:
  std::vector<NumberedError> failures_;
};

}  // namespace pellorin
