// The operating system's file operations, one call each. They are an interface so that a test can make any of
// them fail. Paths are UTF-8. Every failure is a FileError. Its path is empty when a call on an open file
// fails: only the caller knows which file the handle belongs to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileError.h"

namespace pellorin {

enum class FileKind { Missing, File, Folder, Other };

struct FileStatus {
  FileKind kind = FileKind::Missing;
  std::uint64_t size = 0;  // bytes
};

struct FolderEntry {
  std::string name;       // without path
  bool isFolder = false;  // false for a symbolic link to a folder
};

// Who may use a file that did not exist before.
enum class NewFileAccess {
  OwnerAndFolderGroup,  // the owner reads and writes, the folder's group reads, others do nothing (0640)
  FolderUsual,          // the system's default for a new file in that folder
};

using FileHandle = std::intptr_t;

class FileOperations {
 public:
  virtual ~FileOperations() = default;

  // Follows links. A missing file is not a failure.
  virtual FileStatus Status(const std::string& path) = 0;
  // Whether the existing file is write-protected, for everybody or for this user.
  virtual bool IsReadOnly(const std::string& path) = 0;
  // The path of the file that a symbolic link leads to, whether or not it exists. Any other path as given.
  virtual std::string ResolveLinks(const std::string& path) = 0;
  virtual std::vector<FolderEntry> List(const std::string& folder) = 0;  // unordered

  // Opening never waits, not even for the writer of a pipe. Creating fails when the file exists.
  virtual FileHandle OpenForReading(const std::string& path) = 0;
  virtual FileHandle OpenFolder(const std::string& path) = 0;
  virtual FileHandle CreateNew(const std::string& path, NewFileAccess access) = 0;
  virtual std::size_t Read(FileHandle file, char* buffer, std::size_t size) = 0;  // 0 at the end
  virtual std::size_t Write(FileHandle file, std::string_view bytes) = 0;         // may write fewer bytes
  // Gives the open file the owner, group, mode and access list of `from`: all of them, or it fails.
  virtual void CopyAccess(FileHandle to, const std::string& from) = 0;
  virtual void Synchronize(FileHandle file) = 0;  // returns when the disk holds the file or folder
  virtual void Close(FileHandle file) = 0;        // afterwards the handle is invalid, even after a failure

  virtual void Rename(const std::string& from, const std::string& to) = 0;  // replaces `to`
  virtual void Remove(const std::string& path) = 0;
  virtual void CreateFolder(const std::string& path) = 0;  // one level; an existing folder is not a failure
};

FileOperations& SystemFiles();  // the real ones

}  // namespace pellorin
