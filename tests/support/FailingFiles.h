// The system's file operations, of which the n-th one fails (or writes only half of its bytes before
// failing).
#pragma once

#include "platform/FileOperations.h"

namespace pellorin::test {

class FailingFiles : public FileOperations {
 public:
  explicit FailingFiles(FileOperations& real) : real_(real) {}

  void FailAt(int operation) { failAt_ = operation, count_ = 0, failed_ = false; }  // 1-based; 0: never
  bool HasFailed() const { return failed_; }
  int Count() const { return count_; }  // operations since FailAt

  FileStatus Status(const std::string& path) override;
  bool IsReadOnly(const std::string& path) override;
  std::string ResolveLinks(const std::string& path) override;
  std::vector<FolderEntry> List(const std::string& folder) override;
  FileHandle OpenForReading(const std::string& path) override;
  FileHandle OpenFolder(const std::string& path) override;
  FileHandle CreateNew(const std::string& path, NewFileAccess access) override;
  std::size_t Read(FileHandle file, char* buffer, std::size_t size) override;
  std::size_t Write(FileHandle file, std::string_view bytes) override;
  void CopyAccess(FileHandle to, const std::string& from) override;
  void Synchronize(FileHandle file) override;
  void Close(FileHandle file) override;
  void Rename(const std::string& from, const std::string& to) override;
  void Remove(const std::string& path) override;
  void CreateFolder(const std::string& path) override;

 private:
  bool Fails();  // counts one operation
  FileOperations& real_;
  int failAt_ = 0;
  int count_ = 0;
  bool failed_ = false;
};

}  // namespace pellorin::test
