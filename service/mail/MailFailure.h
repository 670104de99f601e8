// A mail that cannot be sent, and why: what the mail component reports as its last error.
#pragma once

#include <string>

#include "base/NumberedError.h"

namespace pellorin {

inline constexpr const char* kMailErrorSource = "MailComponent, Send";

class MailFailure : public NumberedError {
 public:
  MailFailure(int number, const std::string& description)
      : NumberedError(number, ErrorSource(kMailErrorSource), description) {}
};

// The numbers of failures that no mail server and no system call reported: libcurl's.
inline constexpr int kBadMailArgument = 43;
inline constexpr int kMailCancelled = 42;

}  // namespace pellorin
