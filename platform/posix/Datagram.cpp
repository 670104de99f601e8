#include "platform/Datagram.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include "base/Deadline.h"
#include "platform/posix/HostSocket.h"

namespace pellorin {
namespace {

NetworkAnswer Ask(const HostAddress& address, const std::string& question,
                  std::chrono::milliseconds patience) {
  std::vector<HostSocket> one;
  one.emplace_back(address);
  const auto refused = [] {
    return NetworkAnswer{AskOutcome::Refused, {}, std::generic_category().message(errno)};
  };
  if (::send(one[0].Descriptor(), question.data(), question.size(), MSG_NOSIGNAL) < 0) return refused();
  if (WaitForSockets(one, SocketIs::Readable, patience).empty()) return {AskOutcome::Silent};
  std::array<char, 65536> buffer{};
  const ssize_t size = ::recv(one[0].Descriptor(), buffer.data(), buffer.size(), 0);
  if (size < 0) return refused();
  return {AskOutcome::Answered, std::string(buffer.data(), static_cast<std::size_t>(size))};
}

}  // namespace

NetworkAnswer AskByDatagram(const std::string& host, std::uint16_t port, const std::string& question,
                            std::chrono::milliseconds patience) {
  const Deadline end(patience);
  const HostAddresses addresses = AddressesOf(host, port, SocketKind::Datagram);
  if (addresses.found.empty()) return {AskOutcome::UnknownHost, {}, addresses.problem};
  NetworkAnswer last;
  for (bool isSilent = true; isSilent;) {
    isSilent = false;
    for (const HostAddress& address : addresses.found) {
      if (end.Left().count() == 0) return {AskOutcome::Silent};
      last = Ask(address, question, std::min(end.Left(), std::chrono::milliseconds(1000)));
      if (last.outcome == AskOutcome::Answered) return last;
      isSilent = isSilent || last.outcome == AskOutcome::Silent;
    }
  }
  return last;
}

}  // namespace pellorin
