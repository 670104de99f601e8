#include "sql/ServerAddress.h"

#include <charconv>

#include "base/Text.h"
#include "base/TextCase.h"

namespace pellorin {
namespace {

constexpr const char* kSource = "ServerAddress";

std::uint16_t PortOf(std::string_view digits, const std::string& server) {
  std::uint16_t port = 0;
  const char* end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, port);
  if (error != std::errc() || rest != end || port == 0)
    throw SqlError(0, ErrorSource(kSource),
                   "The text after the comma in \"" + server + "\" is not a port number (1 to 65535).");
  return port;
}

// Braces have a meaning in the driver's connection string.
bool HoldsForbiddenCharacter(std::string_view text) {
  return HoldsControlCharacter(text) || text.find_first_of("{}") != std::string_view::npos;
}

// SQL Server's own names for this machine. The network does not know them.
bool MeansThisMachine(std::string_view host) {
  return host.empty() || host == "." || EqualIgnoringCase(host, "(local)");
}

}  // namespace

ServerAddress ParseServerAddress(const std::string& server) {
  constexpr std::string_view kProtocol = "tcp:";
  ServerAddress address;
  std::string_view text = WithoutOuterBlanks(server);
  if (StartsWithIgnoringCase(text, kProtocol)) text = WithoutOuterBlanks(text.substr(kProtocol.size()));
  for (const std::string_view protocol : {"np:", "lpc:", "admin:"})
    if (StartsWithIgnoringCase(text, protocol))
      throw SqlError(0, ErrorSource(kSource),
                     "Only TCP connections are supported, not \"" + std::string(protocol) + "\".");
  if (HoldsForbiddenCharacter(text))
    throw SqlError(0, ErrorSource(kSource), "No server is called \"" + server + "\".");
  if (const std::size_t comma = text.find(','); comma != std::string_view::npos) {
    address.port = PortOf(WithoutOuterBlanks(text.substr(comma + 1)), server);
    text = WithoutOuterBlanks(text.substr(0, comma));
  }
  if (const std::size_t backslash = text.find('\\'); backslash != std::string_view::npos) {
    address.instance = WithoutOuterBlanks(text.substr(backslash + 1));
    text = WithoutOuterBlanks(text.substr(0, backslash));
  }
  if (EqualIgnoringCase(address.instance, "MSSQLSERVER")) address.instance.clear();
  if (address.port == 0 && address.instance.empty()) address.port = kDefaultSqlPort;
  address.host = MeansThisMachine(text) ? "localhost" : text;
  address.isThisMachine = EqualIgnoringCase(address.host, "localhost") || address.host == "127.0.0.1";
  return address;
}

SqlError UnknownHost(const std::string& host, const std::string& reason) {
  return {0, ErrorSource(kSource),
          "Unknown host " + host + " (" + reason +
              "). Please check the server's name, and that this machine can look up names."};
}

}  // namespace pellorin
