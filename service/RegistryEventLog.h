// Stands in for the service's registration component: writes what the platform's event viewer reads, the
// value "EventMessageFile" under SYSTEM/CurrentControlSet/Services/EventLog/<log>/<source> of the registry.
#pragma once

#include "platform/Registry.h"
#include "service/EventLogRegistration.h"

namespace pellorin {

class RegistryEventLog : public EventLogRegistration {
 public:
  explicit RegistryEventLog(Registry& registry) : registry_(registry) {}
  // An entry that is already right is not written again.
  void RegisterSource(const std::string& messageFile, const std::string& reserved, const std::string& folder,
                      const std::string& source, const std::string& logName) override;

 private:
  Registry& registry_;
};

}  // namespace pellorin
