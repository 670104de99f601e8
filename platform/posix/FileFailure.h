// Raises what a system call reports.
#pragma once

#include <string>
#include <system_error>

#include "platform/FileError.h"

namespace pellorin {

// FailFileCall("Cannot read the file", path, errno)
[[noreturn]] inline void FailFileCall(const char* whatCannotBeDone, const std::string& path, int error) {
  throw FileError(error, std::string(whatCannotBeDone) + ": " + std::generic_category().message(error), path);
}

}  // namespace pellorin
