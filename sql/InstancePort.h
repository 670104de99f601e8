// The TCP port of a named instance, asked of the SQL Server Browser service of its machine.
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
