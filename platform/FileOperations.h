// The operating system's file operations, one call each, behind an interface, so that a test can make any of
// them fail. Paths are UTF-8. Every failure is a FileError: number = the system's error number, description =
// what could not be done and why, path = the file's full path. A failing call on an open file names no path,
// since only the caller knows what the handle stands for; ReadFile and WriteFileAtomically add it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/NumberedError.h"

namespace pellorin {

// What this program finds wrong with a file by itself.
enum class FileProblem { Missing, IsFolder, IsNoFolder, NotOrdinary, ReadOnly, TooLarge, NotWritten };

// The system's error number of such a problem.
int ErrorNumberOf(FileProblem problem);

class FileError : public NumberedError {
 public:
  FileError(int systemError, const std::string& description, std::string path);
  FileError(FileProblem problem, const std::string& description, std::string path)
      : FileError(ErrorNumberOf(problem), description, std::move(path)) {}

  bool IsMissing() const;  // there is no such file or folder
};

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
  OwnerAndFolderGroup,  // the owner reads and writes, the folder's group reads (0640)
  FolderUsual,          // what the system gives a new file in that folder
};

using FileHandle = std::intptr_t;

class FileOperations {
 public:
  virtual ~FileOperations() = default;

  // Follows links. A missing file is not a failure.
  virtual FileStatus Status(const std::string& path) = 0;
  // Whether an existing file has no write permission for anybody, or this user may not write it.
  virtual bool IsReadOnly(const std::string& path) = 0;
  // The path of the file itself when `path` is a symbolic link (a dangling one too), else `path`.
  virtual std::string ResolveLinks(const std::string& path) = 0;
  virtual std::vector<FolderEntry> List(const std::string& folder) = 0;  // unordered

  // Opening never waits, not even for a pipe's writer; creating fails when the file exists.
  virtual FileHandle OpenForReading(const std::string& path) = 0;
  virtual FileHandle OpenFolder(const std::string& path) = 0;
  virtual FileHandle CreateNew(const std::string& path, NewFileAccess access) = 0;
  virtual std::size_t Read(FileHandle file, char* buffer, std::size_t size) = 0;  // 0 at the end
  virtual std::size_t Write(FileHandle file, std::string_view bytes) = 0;         // may write fewer bytes
  // Owner, group, mode and access list; all or a failure.
  virtual void CopyAccess(FileHandle to, const std::string& from) = 0;
  virtual void Synchronize(FileHandle file) = 0;  // until the disk holds it
  virtual void Close(FileHandle file) = 0;        // the handle is gone afterwards, also when it fails

  virtual void Rename(const std::string& from, const std::string& to) = 0;  // replaces `to`
  virtual void Remove(const std::string& path) = 0;
  virtual void CreateFolder(const std::string& path) = 0;  // one level; an existing folder is not a failure
};

FileOperations& SystemFiles();

}  // namespace pellorin
