// Asks the SQL Server Browser service of a machine for the TCP port of a named instance.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace pellorin {

inline constexpr std::uint16_t kBrowserPort = 1434;  // UDP

// SqlError when the host is unknown, or the service does not answer within the patience or names no TCP port.
std::uint16_t PortOfInstance(const std::string& host, const std::string& instance,
                             std::chrono::milliseconds patience, std::uint16_t browserPort = kBrowserPort);

}  // namespace pellorin
