#include "platform/MachineName.h"

#include <unistd.h>

#include <array>

namespace pellorin {

std::string GetMachineName() {
  std::array<char, 256> buffer{};
  if (gethostname(buffer.data(), buffer.size() - 1) != 0) return {};
  const std::string name = buffer.data();
  return name.substr(0, name.find('.'));
}

}  // namespace pellorin
