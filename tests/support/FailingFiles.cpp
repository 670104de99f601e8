#include "tests/support/FailingFiles.h"

#include <cerrno>

namespace pellorin::test {
namespace {

[[noreturn]] void Fail(const std::string& path = {}) {
  throw FileError(EIO, "Injected", path);
}

}  // namespace

bool FailingFiles::Fails() {
  const bool fails = ++count_ == failAt_;
  failed_ = failed_ || fails;
  return fails;
}

FileStatus FailingFiles::Status(const std::string& path) {
  if (Fails()) Fail(path);
  return real_.Status(path);
}

bool FailingFiles::IsReadOnly(const std::string& path) {
  if (Fails()) Fail(path);
  return real_.IsReadOnly(path);
}

std::string FailingFiles::ResolveLinks(const std::string& path) {
  if (Fails()) Fail(path);
  return real_.ResolveLinks(path);
}

std::vector<FolderEntry> FailingFiles::List(const std::string& folder) {
  if (Fails()) Fail(folder);
  return real_.List(folder);
}

FileHandle FailingFiles::OpenForReading(const std::string& path) {
  if (Fails()) Fail(path);
  return real_.OpenForReading(path);
}

FileHandle FailingFiles::OpenFolder(const std::string& path) {
  if (Fails()) Fail(path);
  return real_.OpenFolder(path);
}

FileHandle FailingFiles::CreateNew(const std::string& path, NewFileAccess access) {
  if (Fails()) Fail(path);
  return real_.CreateNew(path, access);
}

std::size_t FailingFiles::Read(FileHandle file, char* buffer, std::size_t size) {
  if (Fails()) Fail();
  return real_.Read(file, buffer, size);
}

std::size_t FailingFiles::Write(FileHandle file, std::string_view bytes) {
  if (!Fails()) return real_.Write(file, bytes);
  real_.Write(file, bytes.substr(0, bytes.size() / 2));
  Fail();
}

void FailingFiles::CopyAccess(FileHandle to, const std::string& from) {
  if (Fails()) Fail(from);
  real_.CopyAccess(to, from);
}

void FailingFiles::Synchronize(FileHandle file) {
  if (Fails()) Fail();
  real_.Synchronize(file);
}

void FailingFiles::Close(FileHandle file) {
  const bool fails = Fails();
  real_.Close(file);
  if (fails) Fail();
}

void FailingFiles::Rename(const std::string& from, const std::string& to) {
  if (Fails()) Fail(to);
  real_.Rename(from, to);
}

void FailingFiles::Remove(const std::string& path) {
  if (Fails()) Fail(path);
  real_.Remove(path);
}

void FailingFiles::CreateFolder(const std::string& path) {
  if (Fails()) Fail(path);
  real_.CreateFolder(path);
}

}  // namespace pellorin::test
