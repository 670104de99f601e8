// The network addresses of a host. The one place that turns a host's name into them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pellorin {

enum class SocketKind { Stream, Datagram };

struct HostAddress {
  int family = 0;  // the system's own number, as OpenSocket takes it
  int type = 0;
  int protocol = 0;
  std::string bytes = {};  // as the system's socket functions take it, with the port
};

struct HostAddresses {
  std::vector<HostAddress> found;  // empty for an unknown host
  std::string problem;             // why none was found, in the system's words
};

// Asks the system's name service, which sets its own time limit.
HostAddresses AddressesOf(const std::string& host, std::uint16_t port, SocketKind kind);

}  // namespace pellorin
