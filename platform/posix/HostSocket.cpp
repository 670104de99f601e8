#include "platform/posix/HostSocket.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "base/Deadline.h"

namespace pellorin {

HostSocket::HostSocket(const HostAddress& address)
    : descriptor_(::socket(address.family, address.type | SOCK_CLOEXEC | SOCK_NONBLOCK, address.protocol)) {
  const auto* target = reinterpret_cast<const sockaddr*>(address.bytes.data());
  const bool fails =
      descriptor_ < 0 || ::connect(descriptor_, target, static_cast<socklen_t>(address.bytes.size())) != 0;
  if (fails && errno != EINPROGRESS) error_ = errno;
}

HostSocket::HostSocket(HostSocket&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), error_(other.error_) {}

HostSocket& HostSocket::operator=(HostSocket&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  std::swap(error_, other.error_);
  return *this;
}

HostSocket::~HostSocket() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

int HostSocket::Error() {
  socklen_t size = sizeof error_;
  if (error_ == 0 && ::getsockopt(descriptor_, SOL_SOCKET, SO_ERROR, &error_, &size) != 0) error_ = errno;
  return error_;
}

std::vector<std::size_t> WaitForSockets(const std::vector<HostSocket>& sockets, SocketIs wanted,
                                        std::chrono::milliseconds patience) {
  const Deadline end(patience);
  const short event = wanted == SocketIs::Readable ? POLLIN : POLLOUT;
  std::vector<pollfd> waiting;
  for (const HostSocket& socket : sockets) waiting.push_back({socket.Descriptor(), event, 0});
  int count = 0;
  do {
    count = ::poll(waiting.data(), waiting.size(), static_cast<int>(end.Left().count()));
  } while (count < 0 && errno == EINTR);
  std::vector<std::size_t> ready;
  for (std::size_t index = 0; index < waiting.size(); ++index)
    if (waiting[index].revents != 0) ready.push_back(index);
  return ready;
}

}  // namespace pellorin
