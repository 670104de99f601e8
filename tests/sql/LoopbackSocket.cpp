#include "tests/sql/LoopbackSocket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <system_error>

namespace pellorin::tds {
namespace {

void Check(int result, const char* what) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

LoopbackSocket LoopbackSocket::Bound(int type) {
  LoopbackSocket socket(::socket(AF_INET, type | SOCK_CLOEXEC, 0));
  Check(socket.descriptor_, "socket");
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  Check(::bind(socket.descriptor_, std::bit_cast<const sockaddr*>(&address), sizeof address), "bind");
  if (type == SOCK_STREAM) Check(::listen(socket.descriptor_, SOMAXCONN), "listen");
  return socket;
}

std::uint16_t LoopbackSocket::Port() const {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  Check(::getsockname(descriptor_, std::bit_cast<sockaddr*>(&address), &size), "getsockname");
  return ntohs(address.sin_port);
}

// Fails with "not connected" for datagram sockets, yet wakes their readers.
void LoopbackSocket::Shutdown() const {
  if (descriptor_ >= 0) ::shutdown(descriptor_, SHUT_RDWR);
}

void LoopbackSocket::Close() {
  if (descriptor_ >= 0) ::close(std::exchange(descriptor_, -1));
}

}  // namespace pellorin::tds
