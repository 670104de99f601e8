// The address of a SQL Server as users write it: HOST, HOST,PORT or HOST\INSTANCE, with or without "tcp:"
// before it. ".", "(local)", "localhost" and 127.0.0.1 are this machine.
#pragma once

#include <cstdint>
#include <string>

#include "sql/SqlConnection.h"

namespace pellorin {

struct ServerAddress {
  std::string host;
  std::uint16_t port = 0;  // 0: the browser service knows it by the instance's name
  std::string instance;    // empty: the default one
  bool isThisMachine = false;
};

inline constexpr std::uint16_t kDefaultSqlPort = 1433;

// SqlError for a port outside 1 to 65535, and for a name that no server can have.
ServerAddress ParseServerAddress(const std::string& server);

// The error for a host whose address is not found. `reason` is in the system's words.
SqlError UnknownHost(const std::string& host, const std::string& reason);

}  // namespace pellorin
