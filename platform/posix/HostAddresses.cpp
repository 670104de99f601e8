#include "platform/posix/HostAddresses.h"

#include <netdb.h>
#include <sys/socket.h>

#include <cerrno>
#include <memory>
#include <system_error>

#include "platform/HostName.h"

namespace pellorin {

HostAddresses AddressesOf(const std::string& host, std::uint16_t port, SocketKind kind) {
  addrinfo hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = kind == SocketKind::Stream ? SOCK_STREAM : SOCK_DGRAM;
  addrinfo* first = nullptr;
  const int problem = getaddrinfo(AsciiHostName(host).c_str(), std::to_string(port).c_str(), &hints, &first);
  if (problem == EAI_SYSTEM) return {{}, std::generic_category().message(errno)};
  if (problem != 0) return {{}, gai_strerror(problem)};
  const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> all(first, freeaddrinfo);
  HostAddresses addresses;
  for (const addrinfo* next = first; next != nullptr; next = next->ai_next)
    addresses.found.push_back({next->ai_family, next->ai_socktype, next->ai_protocol,
                               std::string(reinterpret_cast<const char*>(next->ai_addr), next->ai_addrlen)});
  return addresses;
}

}  // namespace pellorin
