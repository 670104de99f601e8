// A socket that closes itself, and sockets bound to a free port of the loopback address.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <utility>

namespace pellorin::tds {

class LoopbackSocket {
 public:
  explicit LoopbackSocket(int descriptor) : descriptor_(descriptor) {}
  // Of SOCK_STREAM (listening) or SOCK_DGRAM; throws std::system_error.
  static LoopbackSocket Bound(int type) {
    LoopbackSocket socket(::socket(AF_INET, type | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    Check(::bind(socket.descriptor_, std::bit_cast<const sockaddr*>(&address), sizeof address));
    if (type == SOCK_STREAM) Check(::listen(socket.descriptor_, SOMAXCONN));
    return socket;
  }
  LoopbackSocket(LoopbackSocket&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  ~LoopbackSocket() { Close(); }

  int Descriptor() const { return descriptor_; }
  std::uint16_t Port() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    Check(::getsockname(descriptor_, std::bit_cast<sockaddr*>(&address), &size));
    return ntohs(address.sin_port);
  }
  // Wakes a thread that reads, writes or accepts here. Fails with "not connected" for datagram sockets, yet
  // wakes their readers.
  void Shutdown() const {
    if (descriptor_ >= 0) ::shutdown(descriptor_, SHUT_RDWR);
  }
  void Close() {
    if (descriptor_ >= 0) ::close(std::exchange(descriptor_, -1));
  }

 private:
  static void Check(int result) {
    if (result < 0) throw std::system_error(errno, std::generic_category(), "loopback socket");
  }

  int descriptor_;
};

}  // namespace pellorin::tds
