#include "tests/sql/BrowserStub.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <array>
#include <bit>
#include <utility>

#include "platform/TextCase.h"

namespace pellorin::tds {

BrowserStub::BrowserStub(std::string instance, std::uint16_t instancePort)
    : instance_(std::move(instance)),
      instancePort_(instancePort),
      socket_(LoopbackSocket::Bound(SOCK_DGRAM)),
      thread_([this] { Serve(); }) {}

BrowserStub::~BrowserStub() {
  {
    const std::lock_guard lock(mutex_);
    isStopping_ = true;
  }
  socket_.Shutdown();
  thread_.join();
}

std::vector<std::string> BrowserStub::Questions() const {
  const std::lock_guard lock(mutex_);
  return questions_;
}

void BrowserStub::Serve() {
  while (true) {
    std::array<char, 1024> bytes{};
    sockaddr_in client{};
    socklen_t size = sizeof client;
    auto* const address = std::bit_cast<sockaddr*>(&client);
    const ssize_t count = ::recvfrom(socket_.Descriptor(), bytes.data(), bytes.size(), 0, address, &size);
    const std::string question(bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    {
      const std::lock_guard lock(mutex_);
      if (isStopping_) return;
      questions_.push_back(question);
    }
    const std::string answer = Answer(question);
    if (!answer.empty()) ::sendto(socket_.Descriptor(), answer.data(), answer.size(), 0, address, size);
  }
}

// Nothing when the question is another.
std::string BrowserStub::Answer(const std::string& question) const {
  if (!EqualIgnoringCase(question, "\x04" + instance_ + std::string(1, '\0'))) return {};
  const std::string text = "ServerName;HOST;InstanceName;" + instance_ +
                           ";IsClustered;No;Version;16.0.1000.6;tcp;" + std::to_string(instancePort_) + ";;";
  const auto size = static_cast<std::uint16_t>(text.size());
  return std::string("\x05") + static_cast<char>(size & 0xFF) + static_cast<char>(size >> 8) + text;
}

}  // namespace pellorin::tds
