#include "platform/posix/KerberosTicket.h"

#include <unistd.h>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "base/Text.h"
#include "files/FileLookup.h"
#include "platform/Environment.h"
#include "platform/Paths.h"
#include "platform/posix/CredentialCache.h"

namespace pellorin {
namespace {

// Nothing for a file that is missing or cannot be read. The driver cannot use it either.
std::optional<std::string> ReadIfPossible(FileOperations& files, const std::string& path) {
  try {
    return ReadFileIfPresent(files, path);
  } catch (const FileError&) {
    return std::nullopt;
  }
}

// Whether a line of Kerberos' settings, not a comment, says where tickets are kept.
bool NamesAnotherPlace(const std::string& settings) {
  for (const std::string& line : SplitAt("\n", settings)) {
    const std::string_view text = WithoutOuterBlanks(line);
    if (text.starts_with("default_ccache_name")) return true;
  }
  return false;
}

// Nothing when the tickets are not kept in a file.
std::optional<std::string> TicketFile(FileOperations& files) {
  constexpr std::string_view kFileKind = "FILE:";
  const std::string named = EnvironmentOr("KRB5CCNAME", "");
  if (named.empty()) {
    const auto settings = ReadIfPossible(files, "/etc/krb5.conf");
    if (settings && NamesAnotherPlace(*settings)) return std::nullopt;
    return "/tmp/krb5cc_" + std::to_string(getuid());
  }
  if (named.starts_with(kFileKind)) return named.substr(kFileKind.size());
  if (IsFullPath(named)) return named;
  return std::nullopt;
}

}  // namespace

bool MayHaveKerberosTicket(FileOperations& files) {
  const auto file = TicketFile(files);
  if (!file) return true;
  const auto bytes = ReadIfPossible(files, *file);
  if (!bytes) return false;
  const auto end = LastTicketEnd(*bytes);
  const auto now =
      std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch());
  return !end || std::chrono::seconds(*end) > now;
}

}  // namespace pellorin
