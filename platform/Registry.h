// The system's registry. Off Windows a folder tree stands in for it: a key is a folder, a value a file that
// holds its raw bytes; lookups ignore letter case. The tree is the folder named by PELLORIN_REGISTRY, else
// /etc/pellorin/registry. Key paths are separated by "/".
#pragma once

#include <optional>
#include <string>

#include "platform/FileOperations.h"

namespace pellorin {

class Registry {
 public:
  Registry(FileOperations& files, std::string root);

  // Nothing when the key or the value is absent. FileError when it cannot be read.
  std::optional<std::string> ReadValue(const std::string& key, const std::string& value) const;
  // Creates the key where it is absent. FileError when it cannot be written.
  void WriteValue(const std::string& key, const std::string& value, const std::string& bytes);

 private:
  FileOperations& files_;
  std::string root_;
};

std::string DefaultRegistryRoot();
// Whether somebody has laid out a registry: PELLORIN_REGISTRY is set, or the folder exists.
bool HasRegistry(FileOperations& files);

}  // namespace pellorin
