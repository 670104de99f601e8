#include "platform/MachineName.h"

#include <unistd.h>

#include <array>

namespace pellorin {

std::string GetHostName() {
  std::array<char, 256> buffer{};
  return gethostname(buffer.data(), buffer.size() - 1) == 0 ? buffer.data() : std::string();
}

std::string GetMachineName() {
  const std::string name = GetHostName();
  return name.substr(0, name.find('.'));
}

}  // namespace pellorin
