// Asks a SQL Server, before the login, whether it encrypts connections. The driver does not say, so the
// program asks on a connection of its own.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace pellorin {

// True when the server offers TLS or demands it. SqlError when the host is unknown, cannot be reached, stays
// silent, closes the connection, or does not answer as a SQL Server.
bool OffersEncryption(const std::string& host, std::uint16_t port, std::chrono::milliseconds patience);

}  // namespace pellorin
