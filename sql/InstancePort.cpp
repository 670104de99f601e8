#include "sql/InstancePort.h"

#include <charconv>

#include "base/Text.h"
#include "platform/Datagram.h"
#include "sql/ServerAddress.h"

namespace pellorin {
namespace {

// The answer is a byte 5, two bytes of length, and pairs of the form "name;value;", such as "tcp;1433;".
std::uint16_t PortIn(const std::string& answer) {
  constexpr std::size_t kHeader = 3;
  if (answer.size() <= kHeader || answer[0] != 5) return 0;
  const auto parts = SplitAt(";", std::string_view(answer).substr(kHeader));
  std::uint16_t port = 0;
  for (std::size_t i = 0; i + 1 < parts.size(); i += 2)
    if (parts[i] == "tcp")
      std::from_chars(parts[i + 1].data(), parts[i + 1].data() + parts[i + 1].size(), port);
  return port;
}

}  // namespace

std::uint16_t PortOfInstance(const std::string& host, const std::string& instance,
                             std::chrono::milliseconds patience, std::uint16_t browserPort) {
  const std::string question = '\x04' + instance + '\0';
  const NetworkAnswer answer = AskByDatagram(host, browserPort, question, patience);
  if (answer.outcome == AskOutcome::UnknownHost) throw UnknownHost(host, answer.reason);
  const bool isAnswered = answer.outcome == AskOutcome::Answered;
  if (const std::uint16_t port = isAnswered ? PortIn(answer.bytes) : std::uint16_t{0}; port != 0) return port;
  throw SqlError(0, ErrorSource("InstancePort"),
                 "The SQL Server Browser service of " + host + " (UDP port 1434) " +
                     (isAnswered ? "names no TCP port of instance " : "gave no answer about instance ") +
                     instance + ". Please check the name, or give the port, as in " + host + ",1433.");
}

}  // namespace pellorin
