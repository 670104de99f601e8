// How a question to another computer ended.
#pragma once

#include <string>

namespace pellorin {

enum class AskOutcome {
  Answered,
  UnknownHost,  // its name leads to no address
  Refused,      // the port is closed, or the host cannot be reached
  Silent,       // nothing came in time
  Closed,       // the connection was closed before the whole answer had come
};

struct NetworkAnswer {
  AskOutcome outcome = AskOutcome::Silent;
  std::string bytes = {};   // of the answer
  std::string reason = {};  // the system's own words for UnknownHost and Refused
};

}  // namespace pellorin
