#include "platform/KerberosTicket.h"

#include <unistd.h>

#include <cstdlib>
#include <string>

namespace pellorin {

bool MayHaveKerberosTicket() {
  constexpr std::string_view kFileKind = "FILE:";
  const char* named = std::getenv("KRB5CCNAME");
  std::string path = named != nullptr && *named != '\0' ? named : "/tmp/krb5cc_" + std::to_string(getuid());
  if (path.starts_with(kFileKind))
    path.erase(0, kFileKind.size());
  else if (path.front() != '/')
    return true;  // kept elsewhere
  return access(path.c_str(), R_OK) == 0;
}

}  // namespace pellorin
