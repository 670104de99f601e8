// The system's file operations, of which the n-th one fails (or writes only half of its
// bytes before failing).
#pragma once

#include <cerrno>

#include "platform/FileOperations.h"

namespace pellorin::test {

class FailingFiles : public FileOperations {
 public:
  explicit FailingFiles(FileOperations& real) : real_(real) {}

  void FailAt(int operation) { failAt_ = operation, count_ = 0, failed_ = false; }  // 1-based; 0: never
  bool HasFailed() const { return failed_; }
  int Count() const { return count_; }  // operations since FailAt

  FileStatus Status(const std::string& path) override { return Next(path).Status(path); }
  bool IsReadOnly(const std::string& path) override { return Next(path).IsReadOnly(path); }
  std::string ResolveLinks(const std::string& path) override { return Next(path).ResolveLinks(path); }
  std::vector<FolderEntry> List(const std::string& folder) override { return Next(folder).List(folder); }
  FileHandle OpenForReading(const std::string& path) override { return Next(path).OpenForReading(path); }
  FileHandle OpenFolder(const std::string& path) override { return Next(path).OpenFolder(path); }
  FileHandle CreateNew(const std::string& path, NewFileAccess access) override {
    return Next(path).CreateNew(path, access);
  }
  std::size_t Read(FileHandle file, char* buffer, std::size_t size) override {
    return Next().Read(file, buffer, size);
  }
  std::size_t Write(FileHandle file, std::string_view bytes) override {
    if (!Fails()) return real_.Write(file, bytes);
    real_.Write(file, bytes.substr(0, bytes.size() / 2));
    throw Injected();
  }
  void CopyAccess(FileHandle to, const std::string& from) override { Next(from).CopyAccess(to, from); }
  void Synchronize(FileHandle file) override { Next().Synchronize(file); }
  void Close(FileHandle file) override {
    const bool fails = Fails();
    real_.Close(file);
    if (fails) throw Injected();
  }
  void Rename(const std::string& from, const std::string& to) override { Next(to).Rename(from, to); }
  void Remove(const std::string& path) override { Next(path).Remove(path); }
  void CreateFolder(const std::string& path) override { Next(path).CreateFolder(path); }

 private:
  static FileError Injected(const std::string& path = {}) { return {EIO, "Injected", path}; }
  bool Fails() {  // counts one operation
    const bool fails = ++count_ == failAt_;
    failed_ = failed_ || fails;
    return fails;
  }
  FileOperations& Next(const std::string& path = {}) {
    if (Fails()) throw Injected(path);
    return real_;
  }

  FileOperations& real_;
  int failAt_ = 0;
  int count_ = 0;
  bool failed_ = false;
};

}  // namespace pellorin::test
