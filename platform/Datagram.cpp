#include "platform/Datagram.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <memory>

namespace pellorin {
namespace {

using Addresses = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;
using Clock = std::chrono::steady_clock;

Addresses Resolve(const std::string& host, std::uint16_t port) {
  addrinfo hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_DGRAM;
  addrinfo* found = nullptr;
  if (getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found) != 0) found = nullptr;
  return {found, freeaddrinfo};
}

// A socket that talks to one address.
class DatagramSocket {
 public:
  explicit DatagramSocket(const addrinfo& address)
      : descriptor_(socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC, address.ai_protocol)) {
    if (descriptor_ >= 0) connect(descriptor_, address.ai_addr, address.ai_addrlen);
  }
  ~DatagramSocket() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  DatagramSocket(const DatagramSocket&) = delete;
  DatagramSocket& operator=(const DatagramSocket&) = delete;

  struct Reply {
    bool isSilent = false;  // nothing came in time; neither that nor an answer: nobody listens there
    std::optional<std::string> answer;
  };
  Reply Ask(const std::string& question, std::chrono::milliseconds patience) const {
    if (send(descriptor_, question.data(), question.size(), MSG_NOSIGNAL) < 0) return {};
    pollfd waiting{descriptor_, POLLIN, 0};
    if (poll(&waiting, 1, static_cast<int>(patience.count())) <= 0) return {true, std::nullopt};
    std::array<char, 65536> buffer{};
    const ssize_t size = recv(descriptor_, buffer.data(), buffer.size(), 0);
    if (size < 0) return {};
    return {false, std::string(buffer.data(), static_cast<std::size_t>(size))};
  }

 private:
  int descriptor_;
};

}  // namespace

std::optional<std::string> AskByDatagram(const std::string& host, std::uint16_t port,
                                         const std::string& question, std::chrono::milliseconds patience) {
  const Clock::time_point end = Clock::now() + patience;
  const Addresses addresses = Resolve(host, port);
  for (bool isSilent = true; isSilent;) {
    isSilent = false;
    for (const addrinfo* address = addresses.get(); address != nullptr; address = address->ai_next) {
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
      if (left.count() <= 0) return std::nullopt;
      auto reply = DatagramSocket(*address).Ask(question, std::min(left, std::chrono::milliseconds(1000)));
      if (reply.answer) return std::move(reply.answer);
      isSilent = isSilent || reply.isSilent;
    }
  }
  return std::nullopt;
}

}  // namespace pellorin
