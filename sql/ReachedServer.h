// A SQL Server that has been found and asked whether it encrypts, before any driver talks to it.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "base/Deadline.h"
#include "sql/ConnectionString.h"

namespace pellorin {

struct ReachedServer {
  std::string host;  // this machine's own name for a trusted connection to it
  std::uint16_t port = 0;
  bool offersEncryption = false;
};

// First asks for the port of a named instance, for half of the time left, but at most for four seconds.
// SqlError when the server cannot be reached, and when it does not encrypt although the environment variable
// PELLORIN_SQL_ENCRYPTION is "require".
ReachedServer ReachServer(const ConnectionSettings& settings, std::uint16_t browserPort, const Deadline& end);

}  // namespace pellorin
