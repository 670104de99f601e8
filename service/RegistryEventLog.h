// Stands in for the service's registration component: writes the value "EventMessageFile" under
// SYSTEM/CurrentControlSet/Services/EventLog/<log>/<source> of the registry, where the event viewer reads it.
#pragma once

#include "platform/Registry.h"
#include "service/EventLogRegistration.h"

namespace pellorin {

class RegistryEventLog : public EventLogRegistration {
 public:
  explicit RegistryEventLog(Registry& registry) : registry_(registry) {}

  // A correct entry is not written again.
  void RegisterSource(const std::string& messageFile, const std::string& reserved, const std::string& folder,
                      const std::string& source, const std::string& logName) override;

 private:
  Registry& registry_;
};

}  // namespace pellorin
