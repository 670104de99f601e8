// Texts for and about the ODBC drivers: FreeTDS's and Microsoft's.
#pragma once

#include <chrono>
#include <string>

#include "platform/FileOperations.h"
#include "sql/ConnectionString.h"
#include "sql/ReachedServer.h"

namespace pellorin {

// The driver's own connection string. If the server offers encryption, the string makes the driver insist on
// it: the driver then fails rather than going on in clear.
std::string DriverText(const std::string& driver, const ConnectionSettings& settings,
                       const ReachedServer& server, std::chrono::seconds commandTimeout);

// A line that helps the user where the driver's description of a failed connection does not. May be empty.
std::string FailureAdvice(FileOperations& files, const std::string& description, bool isTrusted,
                          bool isEncrypted);

// The sentence of SqlConnection::SecurityNote: server, address, driver and encryption. `isKnown` is false
// when it is not known whether the login was sent: the connection failed before the server answered it.
std::string SecuritySentence(const std::string& driver, const ConnectionSettings& settings,
                             const ReachedServer& server, bool isKnown = true);

// Whether the driver itself is missing. Then nothing was sent.
bool IsDriverMissing(const std::string& description);

}  // namespace pellorin
