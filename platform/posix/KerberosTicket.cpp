#include "platform/posix/KerberosTicket.h"

#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "base/Text.h"
#include "files/FileLookup.h"
#include "platform/FileOperations.h"
#include "platform/posix/CredentialCache.h"

namespace pellorin {
namespace {

// Nothing for a file that is missing or cannot be read: it is of no use to the driver either.
std::optional<std::string> ReadIfPossible(const std::string& path) {
  try {
    return ReadFileIfPresent(SystemFiles(), path);
  } catch (const FileError&) {
    return std::nullopt;
  }
}

// Whether the settings of Kerberos say where tickets are kept, other than in a comment.
bool NamesAnotherPlace(const std::string& settings) {
  for (const std::string& line : SplitAt("\n", settings)) {
    const std::string_view text = WithoutOuterBlanks(line);
    if (text.starts_with("default_ccache_name")) return true;
  }
  return false;
}

// Nothing when the tickets are kept elsewhere.
std::optional<std::string> TicketFile() {
  constexpr std::string_view kFileKind = "FILE:";
  const char* named = std::getenv("KRB5CCNAME");
  if (named == nullptr || *named == '\0') {
    const auto settings = ReadIfPossible("/etc/krb5.conf");
    if (settings && NamesAnotherPlace(*settings)) return std::nullopt;
    return "/tmp/krb5cc_" + std::to_string(getuid());
  }
  std::string path = named;
  if (path.starts_with(kFileKind)) return path.substr(kFileKind.size());
  if (path.front() == '/') return path;
  return std::nullopt;
}

}  // namespace

bool MayHaveKerberosTicket() {
  const auto file = TicketFile();
  if (!file) return true;
  const auto bytes = ReadIfPossible(*file);
  if (!bytes) return false;
  const auto end = LastTicketEnd(*bytes);
  const auto now =
      std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch());
  return !end || std::chrono::seconds(*end) > now;
}

}  // namespace pellorin
