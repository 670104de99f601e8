// The system's registry: values of raw bytes, filed under keys whose parts are separated by "/". Letter
// case does not matter.
//
//   registry.WriteValue("SOFTWARE/Pellorin", "Folder", "/srv/pellorin");
//   registry.ReadValue("software/pellorin", "FOLDER");  // "/srv/pellorin"
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/FileOperations.h"

namespace pellorin {

class Registry {
 public:
  virtual ~Registry() = default;

  // Nothing when the key or the value is absent. FileError when it cannot be read.
  virtual std::optional<std::string> ReadValue(const std::string& key, const std::string& value) const = 0;
  // Creates the key if it is absent. FileError when the value cannot be written.
  virtual void WriteValue(const std::string& key, const std::string& value, const std::string& bytes) = 0;
};

// The registry of this machine. A system without one is given a stand-in, which is kept in `files`.
std::unique_ptr<Registry> SystemRegistry(FileOperations& files);

}  // namespace pellorin
