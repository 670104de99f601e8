// The outcome of a question to another computer.
#pragma once

#include <string>

namespace pellorin {

enum class AskOutcome {
  Answered,
  UnknownHost,  // its name has no address
  Refused,      // the port is closed, or the host cannot be reached
  Silent,       // nothing came in time
  Closed,       // the connection was closed before the answer was complete
};

struct NetworkAnswer {
  AskOutcome outcome = AskOutcome::Silent;
  std::string bytes = {};   // as much of the answer as came
  std::string reason = {};  // for UnknownHost and Refused, in the system's words
};

}  // namespace pellorin
