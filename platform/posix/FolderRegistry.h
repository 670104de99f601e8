// A folder tree that stands in for a registry: a key is a folder, a value is a file that holds its raw bytes.
#pragma once

#include "platform/Registry.h"

namespace pellorin {

class FolderRegistry : public Registry {
 public:
  // The folders are created by the first value that is written.
  FolderRegistry(FileOperations& files, std::string root);

  // The root of this machine's tree: the variable PELLORIN_REGISTRY, else /etc/pellorin/registry.
  static std::string SystemRoot();
  // Whether somebody has laid out this machine's tree: the variable is set, or the folder exists.
  static bool HasSystemRoot(FileOperations& files);

  std::optional<std::string> ReadValue(const std::string& key, const std::string& value) const override;
  void WriteValue(const std::string& key, const std::string& value, const std::string& bytes) override;

 private:
  FileOperations& files_;
  std::string root_;
};

}  // namespace pellorin
