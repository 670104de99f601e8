// The service's registration component: registers a source of events with the system's event viewer.
#pragma once

#include <string>

namespace pellorin {

class EventLogRegistration {
 public:
  virtual ~EventLogRegistration() = default;
  // `reserved` is passed empty. Harmless when the source is already registered. NumberedError for a failure.
  virtual void RegisterSource(const std::string& messageFile, const std::string& reserved,
                              const std::string& folder, const std::string& source,
                              const std::string& logName) = 0;
};

}  // namespace pellorin
