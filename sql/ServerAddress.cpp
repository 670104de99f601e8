#include "sql/ServerAddress.h"

#include <algorithm>
#include <charconv>

#include "base/Text.h"
#include "base/TextCase.h"

namespace pellorin {
namespace {

constexpr const char* kSource = "ServerAddress";

std::uint16_t PortOf(const std::string& digits, const std::string& server) {
  std::uint16_t port = 0;
  const char* end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, port);
  if (error != std::errc() || rest != end || port == 0)
    throw SqlError(0, ErrorSource(kSource),
                   "What follows the comma in \"" + server + "\" is no port number (1 to 65535).");
  return port;
}

std::string Trimmed(const std::string& text) {
  return std::string(WithoutOuterBlanks(text));
}

// Braces would reach into what the driver is told of the login.
bool HoldsForeignCharacter(const std::string& text) {
  return std::any_of(text.begin(), text.end(), [](char letter) {
    const auto code = static_cast<unsigned char>(letter);
    return code < 0x20 || letter == '{' || letter == '}';
  });
}

// Names that only this system's users know; the network knows no such host.
bool IsUnnamed(const std::string& host) {
  return host.empty() || host == "." || EqualIgnoringCase(host, "(local)");
}

}  // namespace

ServerAddress ParseServerAddress(const std::string& server) {
  constexpr std::string_view kProtocol = "tcp:";
  ServerAddress address;
  std::string text = Trimmed(server);
  if (EqualIgnoringCase(std::string_view(text).substr(0, kProtocol.size()), kProtocol))
    text = Trimmed(text.substr(kProtocol.size()));
  for (const std::string_view protocol : {"np:", "lpc:", "admin:"})
    if (EqualIgnoringCase(std::string_view(text).substr(0, protocol.size()), protocol))
      throw SqlError(0, ErrorSource(kSource),
                     "Only TCP connections are supported, not \"" + std::string(protocol) + "\".");
  if (HoldsForeignCharacter(text))
    throw SqlError(0, ErrorSource(kSource), "No server is called \"" + server + "\".");
  if (const std::size_t comma = text.find(','); comma != std::string::npos) {
    address.port = PortOf(Trimmed(text.substr(comma + 1)), server);
    text = Trimmed(text.substr(0, comma));
  }
  if (const std::size_t backslash = text.find('\\'); backslash != std::string::npos) {
    address.instance = Trimmed(text.substr(backslash + 1));
    text = Trimmed(text.substr(0, backslash));
  }
  if (EqualIgnoringCase(address.instance, "MSSQLSERVER")) address.instance.clear();
  if (address.port == 0 && address.instance.empty()) address.port = kDefaultSqlPort;
  address.host = IsUnnamed(text) ? "localhost" : text;
  address.isThisMachine = EqualIgnoringCase(address.host, "localhost") || address.host == "127.0.0.1";
  return address;
}

SqlError UnknownHost(const std::string& host, const std::string& reason) {
  return {0, ErrorSource(kSource),
          "Unknown host " + host + " (" + reason +
              "). Please check the server's name, and that this machine can look up names."};
}

}  // namespace pellorin
