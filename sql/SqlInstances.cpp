#include "sql/SqlInstances.h"

#include "base/AnsiText.h"
#include "base/Text.h"

namespace pellorin {
namespace {

constexpr const char* kKey = "SOFTWARE/Microsoft/Microsoft SQL Server";
constexpr const char* kValue = "InstalledInstances";
constexpr const char* kDefaultInstance = "MSSQLSERVER";

// The names, each ended by a NUL, and one more NUL, as registries hold lists of texts.
std::string StoredList(const Registry& registry, bool isDefaultAssumed) {
  const auto stored = registry.ReadValue(kKey, kValue);
  const std::string assumed = isDefaultAssumed ? kDefaultInstance + std::string(2, '\0') : std::string();
  return stored.value_or(assumed);
}

}  // namespace

bool GetInstalledSqlInstances(const Registry& registry, bool isDefaultAssumed, const std::string& machineName,
                              std::vector<std::string>& instances) {
  std::string list;
  try {
    list = StoredList(registry, isDefaultAssumed);
  } catch (const FileError&) {
    return false;
  }
  if (list.empty()) return false;
  list.pop_back();
  instances = SplitAt(std::string_view("\0", 1), AnsiToUtf8(list));
  for (std::string& name : instances) {
    if (name == kDefaultInstance)
      name = machineName;
    else if (!name.empty())
      name = machineName + "\\" + name;
  }
  return true;
}

}  // namespace pellorin
