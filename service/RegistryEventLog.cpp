#include "service/RegistryEventLog.h"

#include "platform/Paths.h"

namespace pellorin {

void RegistryEventLog::RegisterSource(const std::string& messageFile, const std::string& /*reserved*/,
                                      const std::string& folder, const std::string& source,
                                      const std::string& logName) {
  const std::string key = "SYSTEM/CurrentControlSet/Services/EventLog/" + logName + "/" + source;
  const std::string path = JoinPath(folder, messageFile);
  if (registry_.ReadValue(key, "EventMessageFile") != path)
    registry_.WriteValue(key, "EventMessageFile", path);
}

}  // namespace pellorin
