// Stands in for the registry where the system has none: a tree of folders. A key is a folder, a value a file
// that holds its bytes.
#pragma once

#include "platform/Registry.h"

namespace pellorin {

class FolderRegistry : public Registry {
 public:
  FolderRegistry(FileOperations& files, std::string root);

  bool Exists() const override;
  std::optional<std::string> ReadValue(const std::string& key, const std::string& value) const override;
  void WriteValue(const std::string& key, const std::string& value, const std::string& bytes) override;

 private:
  FileOperations& files_;
  std::string root_;
};

}  // namespace pellorin
