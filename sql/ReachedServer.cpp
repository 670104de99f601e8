#include "sql/ReachedServer.h"

#include <algorithm>

#include "base/TextCase.h"
#include "platform/Environment.h"
#include "platform/MachineName.h"
#include "sql/InstancePort.h"
#include "sql/Prelogin.h"
#include "sql/ServerAddress.h"

namespace pellorin {
namespace {

constexpr const char* kSource = "ReachedServer";

// Whether servers without encryption are refused. An unknown value is an error: it must not count as "no".
bool IsEncryptionRequired() {
  constexpr const char* kVariable = "PELLORIN_SQL_ENCRYPTION";
  const std::string chosen = EnvironmentOr(kVariable, "");
  if (chosen.empty()) return false;
  if (EqualIgnoringCase(chosen, "require")) return true;
  throw SqlError(
      0, ErrorSource(kSource),
      std::string(kVariable) + " is \"" + chosen + "\". Please set it to \"require\", or not at all.");
}

// Asks before the driver does: the driver would ask sixteen times, whatever the time-out.
std::uint16_t PortOf(const ServerAddress& address, std::uint16_t browserPort, const Deadline& end) {
  if (address.port != 0) return address.port;
  const auto patience = std::min(end.Left() / 2, std::chrono::milliseconds(4000));
  return PortOfInstance(address.host, address.instance, patience, browserPort);
}

}  // namespace

ReachedServer ReachServer(const ConnectionSettings& settings, std::uint16_t browserPort,
                          const Deadline& end) {
  const bool isRequired = IsEncryptionRequired();
  const ServerAddress address = ParseServerAddress(settings.server);
  ReachedServer server;
  // Tickets are issued for host names, never for "localhost".
  server.host = settings.isTrusted && address.isThisMachine ? GetHostName() : address.host;
  server.port = PortOf(address, browserPort, end);
  server.offersEncryption = OffersEncryption(server.host, server.port, end.Left());
  if (isRequired && !server.offersEncryption)
    throw SqlError(0, ErrorSource(kSource),
                   server.host +
                       " does not offer encryption, and PELLORIN_SQL_ENCRYPTION requires it. Please "
                       "enable TLS on the server, or unset that variable.");
  return server;
}

}  // namespace pellorin
