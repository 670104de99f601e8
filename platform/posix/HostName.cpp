#include "platform/HostName.h"

#include <idn2.h>

#include <memory>

#include "base/Text.h"

namespace pellorin {

std::string AsciiHostName(const std::string& host) {
  if (IsAscii(host)) return host;
  char* converted = nullptr;
  if (idn2_to_ascii_8z(host.c_str(), &converted, IDN2_NFC_INPUT | IDN2_NONTRANSITIONAL) != IDN2_OK)
    return host;
  const std::unique_ptr<char, decltype(&idn2_free)> owned(converted, idn2_free);
  return owned.get();
}

}  // namespace pellorin
