#include "platform/MachineName.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace pellorin {
namespace {

bool IsFullHostName(std::string_view name) {
  const std::size_t dot = name.find('.');
  return dot != std::string_view::npos && dot > 0 && !name.ends_with('.') &&
         std::all_of(name.begin(), name.end(), [](char character) {
           return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                  (character >= '0' && character <= '9') || character == '-' || character == '.';
         });
}

// Empty for a loopback interface, one that is down, and an address that is not IPv4.
std::string NetworkAddress(const ifaddrs& interface) {
  if (interface.ifa_addr == nullptr || interface.ifa_addr->sa_family != AF_INET ||
      (interface.ifa_flags & IFF_LOOPBACK) != 0 || (interface.ifa_flags & IFF_UP) == 0)
    return {};
  std::array<char, INET_ADDRSTRLEN> text{};
  const auto* address = reinterpret_cast<const sockaddr_in*>(interface.ifa_addr);
  return inet_ntop(AF_INET, &address->sin_addr, text.data(), text.size()) == nullptr ? "" : text.data();
}

}  // namespace

std::string GetHostName() {
  std::array<char, 256> buffer{};
  return gethostname(buffer.data(), buffer.size() - 1) == 0 ? buffer.data() : std::string();
}

std::string GetMachineName() {
  const std::string name = GetHostName();
  return name.substr(0, name.find('.'));
}

std::string GetMailHelloName() {
  if (const std::string name = GetHostName(); IsFullHostName(name)) return name;
  std::string address;
  ifaddrs* first = nullptr;
  if (getifaddrs(&first) == 0) {
    for (const ifaddrs* next = first; next != nullptr && address.empty(); next = next->ifa_next)
      address = NetworkAddress(*next);
    freeifaddrs(first);
  }
  return "[" + (address.empty() ? "127.0.0.1" : address) + "]";
}

}  // namespace pellorin
