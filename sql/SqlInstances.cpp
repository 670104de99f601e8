#include "sql/SqlInstances.h"

#include "base/AnsiText.h"
#include "base/Text.h"
#include "platform/SqlServerSupport.h"

namespace pellorin {
namespace {

constexpr const char* kKey = "SOFTWARE/Microsoft/Microsoft SQL Server";
constexpr const char* kValue = "InstalledInstances";
constexpr const char* kDefaultInstance = "MSSQLSERVER";

// Names separated by NUL and closed by a further one, as the registry holds a list of texts.
std::string StoredList(const Registry& registry, bool isDefaultAssumed) {
  const auto stored = registry.ReadValue(kKey, kValue);
  const std::string assumed = isDefaultAssumed ? kDefaultInstance + std::string(2, '\0') : std::string();
  return stored.value_or(assumed);
}

}  // namespace

bool IsDefaultInstanceAssumed(const Registry& registry, FileOperations& files) {
  try {
    return !registry.Exists() && HasLocalSqlServer(files);
  } catch (const FileError&) {  // a registry that this user may not look at
    return false;
  }
}

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
