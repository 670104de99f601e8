#include "platform/StreamQuestion.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>
#include <vector>

#include "base/Deadline.h"
#include "platform/posix/HostSocket.h"

namespace pellorin {
namespace {

bool MayWorkLater(int error) {
  return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

// Keeps only the socket that connects first, and returns Answered. After any other outcome, none connected.
NetworkAnswer Connect(std::vector<HostSocket>& sockets, const Deadline& end) {
  std::string reason;
  while (true) {
    std::erase_if(sockets, [&](HostSocket& socket) {
      const int error = socket.Error();
      if (error != 0) reason = std::generic_category().message(error);
      return error != 0;
    });
    if (sockets.empty()) return {AskOutcome::Refused, {}, reason};
    const std::vector<std::size_t> ready = WaitForSockets(sockets, SocketIs::Writable, end.Left());
    if (ready.empty()) return {AskOutcome::Silent};
    for (const std::size_t index : ready) {
      if (sockets[index].Error() != 0) continue;
      std::swap(sockets[0], sockets[index]);
      sockets.erase(sockets.begin() + 1, sockets.end());
      return {AskOutcome::Answered};
    }
  }
}

AskOutcome Send(const std::vector<HostSocket>& one, std::string_view question, const Deadline& end) {
  while (!question.empty()) {
    if (WaitForSockets(one, SocketIs::Writable, end.Left()).empty()) return AskOutcome::Silent;
    const ssize_t count = ::send(one[0].Descriptor(), question.data(), question.size(), MSG_NOSIGNAL);
    if (count < 0 && !MayWorkLater(errno)) return AskOutcome::Closed;
    question.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
  }
  return AskOutcome::Answered;
}

}  // namespace

NetworkAnswer AskByStream(const std::string& host, std::uint16_t port, std::string_view question,
                          std::chrono::milliseconds patience,
                          const std::function<bool(std::string_view answer)>& isWhole) {
  const Deadline end(patience);
  const HostAddresses addresses = AddressesOf(host, port, SocketKind::Stream);
  if (addresses.found.empty()) return {AskOutcome::UnknownHost, {}, addresses.problem};
  std::vector<HostSocket> sockets(addresses.found.begin(), addresses.found.end());
  NetworkAnswer answer = Connect(sockets, end);
  if (answer.outcome != AskOutcome::Answered) return answer;
  answer.outcome = Send(sockets, question, end);
  std::array<char, 4096> piece{};
  while (answer.outcome == AskOutcome::Answered && !isWhole(answer.bytes)) {
    if (WaitForSockets(sockets, SocketIs::Readable, end.Left()).empty()) {
      answer.outcome = AskOutcome::Silent;
    } else if (const ssize_t count = ::recv(sockets[0].Descriptor(), piece.data(), piece.size(), 0);
               count > 0) {
      answer.bytes.append(piece.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || !MayWorkLater(errno)) {
      answer.outcome = AskOutcome::Closed;
    }
  }
  return answer;
}

}  // namespace pellorin
