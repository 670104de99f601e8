// The network addresses of a host. No other file turns names into addresses.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pellorin {

enum class SocketKind { Stream, Datagram };

struct HostAddress {
  int family = 0;  // the three arguments of ::socket
  int type = 0;
  int protocol = 0;
  std::string bytes = {};  // the sockaddr, with the port
};

struct HostAddresses {
  std::vector<HostAddress> found;  // empty for an unknown host
  std::string problem;             // why none was found, in the system's words
};

// Asks the system's name service, which sets its own time limit.
HostAddresses AddressesOf(const std::string& host, std::uint16_t port, SocketKind kind);

}  // namespace pellorin
