// Sockets of the loopback address, each on a free port. They close themselves.
#pragma once

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace pellorin::tds {

class LoopbackSocket {
 public:
  static LoopbackSocket Listening() { return Bound(SOCK_STREAM); }
  static LoopbackSocket Datagram() { return Bound(SOCK_DGRAM); }
  LoopbackSocket(LoopbackSocket&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  ~LoopbackSocket() { Close(); }

  bool IsOpen() const { return descriptor_ >= 0; }
  std::uint16_t Port() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    Check(::getsockname(descriptor_, std::bit_cast<sockaddr*>(&address), &size));
    return ntohs(address.sin_port);
  }

  // Waits for a client. The socket is not open when the listener was shut down.
  LoopbackSocket Accept() const {
    LoopbackSocket client(::accept4(descriptor_, nullptr, nullptr, SOCK_CLOEXEC));
    const int noDelay = 1;
    ::setsockopt(client.descriptor_, IPPROTO_TCP, TCP_NODELAY, &noDelay, sizeof noDelay);
    return client;
  }
  // Fills the bytes. False when the connection ends before.
  bool Read(char* bytes, std::size_t size) const {
    while (size > 0) {
      const ssize_t count = ::recv(descriptor_, bytes, size, 0);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return false;
      bytes += count;
      size -= static_cast<std::size_t>(count);
    }
    return true;
  }
  // The next read notices a client that has gone.
  void Write(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t count = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return;
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }
  // Waits for a datagram, answers it and returns it.
  std::string AnswerDatagram(std::string_view answer) const {
    std::array<char, 1024> question{};
    sockaddr_in client{};
    socklen_t size = sizeof client;
    auto* const address = std::bit_cast<sockaddr*>(&client);
    const ssize_t count = ::recvfrom(descriptor_, question.data(), question.size(), 0, address, &size);
    if (count < 0) return {};
    ::sendto(descriptor_, answer.data(), answer.size(), 0, address, size);
    return {question.data(), static_cast<std::size_t>(count)};
  }

  // Wakes a thread that reads, writes or accepts here. Reports an error for a datagram socket, yet
  // wakes its reader too.
  void Shutdown() const {
    if (IsOpen()) ::shutdown(descriptor_, SHUT_RDWR);
  }
  void Close() {
    if (IsOpen()) ::close(std::exchange(descriptor_, -1));
  }

 private:
  explicit LoopbackSocket(int descriptor) : descriptor_(descriptor) {}
  static LoopbackSocket Bound(int type) {
    LoopbackSocket socket(::socket(AF_INET, type | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    Check(::bind(socket.descriptor_, std::bit_cast<const sockaddr*>(&address), sizeof address));
    if (type == SOCK_STREAM) Check(::listen(socket.descriptor_, SOMAXCONN));
    return socket;
  }
  static void Check(int result) {
    if (result < 0) throw std::system_error(errno, std::generic_category(), "loopback socket");
  }

  int descriptor_;
};

}  // namespace pellorin::tds
