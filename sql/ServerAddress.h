// Where a SQL Server is reached, as its users write it: HOST, HOST,PORT, HOST\INSTANCE, with "tcp:" before it
// or not; "." and "(local)" are this machine, and so are "localhost" and 127.0.0.1.
#pragma once

#include <cstdint>
#include <string>

#include "sql/SqlConnection.h"

namespace pellorin {

struct ServerAddress {
  std::string host;
  std::uint16_t port = 0;  // 0: to be asked for by the instance's name
  std::string instance;    // empty: the default one
  bool isThisMachine = false;
};

inline constexpr std::uint16_t kDefaultSqlPort = 1433;

// SqlError for a port that is none, and for names that no server has.
ServerAddress ParseServerAddress(const std::string& server);

// The failure to find a host's address; the reason in the system's words.
SqlError UnknownHost(const std::string& host, const std::string& reason);

}  // namespace pellorin
