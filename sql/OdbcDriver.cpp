#include "sql/OdbcDriver.h"

#include "base/TextCase.h"
#include "base/Utf16.h"
#include "platform/HostName.h"
#include "platform/Paths.h"
#include "platform/SqlDrivers.h"
#include "sql/OdbcHandles.h"

namespace pellorin {
namespace {

bool IsMicrosofts(const std::string& driver) {
  const std::string folded = FoldCase(driver);
  return folded.find("odbc driver ") != std::string::npos || folded.find("msodbcsql") != std::string::npos;
}

// "yes" encrypts the whole connection. "no" is said because later versions encrypt unless told otherwise.
std::string MicrosoftsText(const ReachedServer& server) {
  return "SERVER=tcp:" + AsciiHostName(server.host) + "," + std::to_string(server.port) +
         ";Encrypt=" + (server.offersEncryption ? "yes" : "no") + ";TrustServerCertificate=yes;";
}

// The version is fixed: while this driver tries out versions, it ignores time-outs. Without "Timeout",
// beginning and ending a transaction would wait for ever. Without "require", only the login is encrypted.
std::string FreeTdsText(const ReachedServer& server, std::chrono::seconds commandTimeout) {
  return "SERVER=" + AsciiHostName(server.host) + ";PORT=" + std::to_string(server.port) +
         ";TDS_Version=7.4;ClientCharset=UTF-8;Timeout=" + std::to_string(commandTimeout.count()) + ";" +
         (server.offersEncryption ? "Encryption=require;" : "");
}

}  // namespace

// Braces keep a value together up to "};". No value holds that, because a ";" ends a value of the
// connection string already.
std::string DriverText(const std::string& driver, const ConnectionSettings& settings,
                       const ReachedServer& server, std::chrono::seconds commandTimeout) {
  return "DRIVER={" + driver + "};" +
         (IsMicrosofts(driver) ? MicrosoftsText(server) : FreeTdsText(server, commandTimeout)) +
         (settings.isTrusted ? "Trusted_Connection=Yes;DATABASE=" + settings.database + ";"
                             : "UID={" + settings.user + "};PWD={" + settings.password + "};");
}

bool IsDriverMissing(const std::string& description) {
  return description.find("Can't open lib") != std::string::npos;
}

std::string FailureAdvice(FileOperations& files, const std::string& description, bool isTrusted,
                          bool isEncrypted) {
  if (IsDriverMissing(description)) return MissingSqlDriverAdvice();
  if (!IsGeneric(description)) return {};
  if (const std::string problem = isTrusted ? TrustedLoginProblem(files) : ""; !problem.empty())
    return problem;
  if (isEncrypted)
    return "The server offers TLS, so the connection was tried with encryption only. Please check the "
           "server's TLS settings.";
  return {};
}

std::string SecuritySentence(const std::string& driver, const ConnectionSettings& settings,
                             const ReachedServer& server, bool isKnown) {
  constexpr std::size_t kLongest = 60;  // so that the sentence does not widen a window
  const std::string connection = "The connection to " + Shortened(settings.server, kLongest) + " (" +
                                 Shortened(server.host, kLongest) + ", port " + std::to_string(server.port) +
                                 ", driver " + NameOf(driver) + ") was ";
  if (server.offersEncryption) return connection + "encrypted, server not verified.";
  return connection + "not encrypted: " + (settings.isTrusted ? "queries " : "the password ") +
         (isKnown ? "crossed" : "may have crossed") + " the network in clear.";
}

}  // namespace pellorin
