// Why a mail cannot be sent. The mail component reports it as its last error.
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

// Numbers of failures that neither a mail server nor a system call reported. They are libcurl's.
inline constexpr int kBadMailArgument = 43;
inline constexpr int kMailCancelled = 42;

}  // namespace pellorin
