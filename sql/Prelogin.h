// What a SQL Server says before anybody logs in: whether it encrypts connections. The driver does not tell,
// so the program asks by itself, on a connection of its own.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace pellorin {

// True when the server offers TLS or demands it. SqlError when the host is unknown, cannot be reached, stays
// silent, closes the connection, or answers as no SQL Server does.
bool OffersEncryption(const std::string& host, std::uint16_t port, std::chrono::milliseconds patience);

}  // namespace pellorin
