// What an ODBC driver is told of a server, in the words of FreeTDS's driver or of Microsoft's.
#pragma once

#include <chrono>
#include <string>

#include "sql/ConnectionString.h"
#include "sql/ReachedServer.h"

namespace pellorin {

// Where encryption is offered the driver is told to insist on it: it then fails rather than go on in clear.
std::string DriverText(const std::string& driver, const ConnectionSettings& settings,
                       const ReachedServer& server, std::chrono::seconds commandTimeout);

// A line to add below the driver's words for a connection that failed: what they do not say. May be empty.
// `trustedLoginProblem` is TrustedLoginProblem's answer for a trusted connection, else empty.
std::string WhatDriverLeavesOut(const std::string& description, const std::string& trustedLoginProblem,
                                bool isEncrypted);
// What protected a connection, in a sentence: SqlConnection::SecurityNote. `isKnown` is false for a
// connection that failed without an answer to the login, which may not have been sent.
std::string SecuritySentence(const std::string& server, bool isEncrypted, bool isTrusted,
                             bool isKnown = true);
// Whether the driver itself is missing, so that nothing was sent.
bool IsDriverMissing(const std::string& description);

}  // namespace pellorin
