// Boxes for operations that fail. A box shows the description, the file's full path, the number and the
// source; after a failed save, also what was saved and what was not.
#pragma once

#include <exception>
#include <utility>
#include <vector>

#include "base/UserMessages.h"
#include "config/Ini.h"

namespace pellorin {

Message FailureMessage(const NumberedError& error);
// The same for a save that ended early.
Message SaveFailureMessage(const NumberedError& error, const Ini& document);

void ShowFailure(UserMessages& messages, std::exception_ptr failure);

// Runs a handler. When it throws, shows the failure and returns false.
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

// Runs several steps even if some of them fail. RaiseFailures throws their failures as one.
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
