#include "platform/KerberosTicket.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace pellorin {
namespace {

bool IsKeptElsewhere() {
  std::ifstream file("/etc/krb5.conf");
  const std::string text(std::istreambuf_iterator<char>(file), {});
  return text.find("default_ccache_name") != std::string::npos;
}

}  // namespace

bool MayHaveKerberosTicket() {
  constexpr std::string_view kFileKind = "FILE:";
  const char* named = std::getenv("KRB5CCNAME");
  if (named == nullptr || *named == '\0')
    return IsKeptElsewhere() || access(("/tmp/krb5cc_" + std::to_string(getuid())).c_str(), R_OK) == 0;
  std::string path = named;
  if (path.starts_with(kFileKind))
    path.erase(0, kFileKind.size());
  else if (path.front() != '/')
    return true;
  return access(path.c_str(), R_OK) == 0;
}

}  // namespace pellorin
