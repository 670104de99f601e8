// The system's registry: values of raw bytes under keys whose parts are separated by "/". Lookups ignore
// letter case.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/FileOperations.h"

namespace pellorin {

class Registry {
 public:
  virtual ~Registry() = default;

  // Whether there is a registry at all: where somebody must lay it out first, it may be missing.
  virtual bool Exists() const = 0;
  // Nothing when the key or the value is absent. FileError when it cannot be read.
  virtual std::optional<std::string> ReadValue(const std::string& key, const std::string& value) const = 0;
  // Creates the key where it is absent. FileError when it cannot be written.
  virtual void WriteValue(const std::string& key, const std::string& value, const std::string& bytes) = 0;
};

// The registry of this system.
std::unique_ptr<Registry> SystemRegistry(FileOperations& files);

}  // namespace pellorin
