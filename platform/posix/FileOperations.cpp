#include "platform/FileOperations.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <optional>

#include "platform/Paths.h"
#include "platform/posix/FileAccess.h"
#include "platform/posix/FileFailure.h"

namespace pellorin {
namespace {

constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr int kMostLinks = 40;  // as many as the system itself follows

template <typename Call>
auto RepeatWhenInterrupted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

int Descriptor(FileHandle file) {
  return static_cast<int>(file);
}

FileHandle Open(const std::string& path, int flags, const char* whatCannotBeDone) {
  const int descriptor = RepeatWhenInterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC); });
  if (descriptor == -1) FailFileCall(whatCannotBeDone, path, errno);
  return descriptor;
}

FileKind KindOf(mode_t mode) {
  if (S_ISREG(mode)) return FileKind::File;
  return S_ISDIR(mode) ? FileKind::Folder : FileKind::Other;
}

// Nothing when the path is not a symbolic link.
std::optional<std::string> LinkTarget(const std::string& path) {
  std::string target(256, '\0');
  for (;;) {
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    if (length == -1) {
      if (errno == EINVAL || errno == ENOENT || errno == ENOTDIR) return std::nullopt;
      FailFileCall("Cannot follow the symbolic link", path, errno);
    }
    if (static_cast<std::size_t>(length) < target.size()) {
      target.resize(static_cast<std::size_t>(length));
      return target;
    }
    target.resize(target.size() * 2);
  }
}

// Not every file system tells the type of an entry.
bool IsFolder(DIR& folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
  struct stat status {};
  return ::fstatat(::dirfd(&folder), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
         S_ISDIR(status.st_mode);
}

class PosixFiles : public FileOperations {
 public:
  FileStatus Status(const std::string& path) override {
    struct stat status {};
    if (::stat(path.c_str(), &status) == -1) {
      if (errno == ENOENT || errno == ENOTDIR) return {};
      FailFileCall("Cannot examine the file", path, errno);
    }
    return {KindOf(status.st_mode), static_cast<std::uint64_t>(status.st_size)};
  }

  // Root may write everything. A file that nobody may write was protected on purpose: root respects that too.
  bool IsReadOnly(const std::string& path) override {
    struct stat status {};
    if (::stat(path.c_str(), &status) == -1) FailFileCall("Cannot examine the file", path, errno);
    if ((status.st_mode & kAnyWrite) == 0) return true;
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0) return false;
    return errno == EACCES || errno == EPERM || errno == EROFS;
  }

  std::string ResolveLinks(const std::string& path) override {
    std::string current = path;
    for (int links = 0; links <= kMostLinks; ++links) {
      const std::optional<std::string> target = LinkTarget(current);
      if (!target) return current;
      current = IsFullPath(*target) ? *target : JoinPath(FolderOf(current), *target);
    }
    FailFileCall("Cannot follow the symbolic link", path, ELOOP);
  }

  std::vector<FolderEntry> List(const std::string& folder) override {
    const auto close = [](DIR* opened) { ::closedir(opened); };
    const std::unique_ptr<DIR, decltype(close)> opened(::opendir(folder.c_str()), close);
    if (!opened) FailFileCall("Cannot list the folder", folder, errno);
    std::vector<FolderEntry> entries;
    errno = 0;
    while (const dirent* entry = ::readdir(opened.get())) {
      std::string name = entry->d_name;
      if (name != "." && name != "..") entries.push_back({std::move(name), IsFolder(*opened, *entry)});
      errno = 0;
    }
    if (errno != 0) FailFileCall("Cannot list the folder", folder, errno);
    return entries;
  }

  FileHandle OpenForReading(const std::string& path) override {
    return Open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY, "Cannot read the file");
  }

  FileHandle OpenFolder(const std::string& path) override {
    return Open(path, O_RDONLY | O_DIRECTORY, "Cannot open the folder");
  }

  FileHandle CreateNew(const std::string& path, NewFileAccess access) override {
    const bool limited = access == NewFileAccess::OwnerAndFolderGroup;
    const mode_t mode = limited ? S_IRUSR | S_IWUSR : 0666;
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    const int descriptor = RepeatWhenInterrupted([&] { return ::open(path.c_str(), flags, mode); });
    if (descriptor == -1) FailFileCall("Cannot create a file in the folder", path, errno);
    if (limited && !LimitToOwnerAndFolderGroup(descriptor, FolderOf(path))) {
      const int error = errno;
      ::close(descriptor);
      ::unlink(path.c_str());
      FailFileCall("Cannot limit the access to a new file", path, error);
    }
    return descriptor;
  }

  std::size_t Read(FileHandle file, char* buffer, std::size_t size) override {
    const ssize_t count = RepeatWhenInterrupted([&] { return ::read(Descriptor(file), buffer, size); });
    if (count == -1) FailFileCall("Cannot read the file", {}, errno);
    return static_cast<std::size_t>(count);
  }

  std::size_t Write(FileHandle file, std::string_view bytes) override {
    const ssize_t count =
        RepeatWhenInterrupted([&] { return ::write(Descriptor(file), bytes.data(), bytes.size()); });
    if (count == -1) FailFileCall("Cannot write the file", {}, errno);
    return static_cast<std::size_t>(count);
  }

  void CopyAccess(FileHandle to, const std::string& from) override { CopyFileAccess(Descriptor(to), from); }

  void Synchronize(FileHandle file) override {
    if (RepeatWhenInterrupted([&] { return ::fsync(Descriptor(file)); }) == 0) return;
    const int error = errno;
    struct stat status {};
    const bool folder = ::fstat(Descriptor(file), &status) == 0 && S_ISDIR(status.st_mode);
    // Some file systems cannot synchronise folders and need not.
    if (folder && (error == EINVAL || error == ENOTSUP)) return;
    FailFileCall("Cannot bring the file to the disk", {}, error);
  }

  void Close(FileHandle file) override {
    // An interrupted close has released the descriptor all the same; a second close could hit another file.
    if (::close(Descriptor(file)) == -1 && errno != EINTR) FailFileCall("Cannot close the file", {}, errno);
  }

  void Rename(const std::string& from, const std::string& to) override {
    if (::rename(from.c_str(), to.c_str()) == -1) FailFileCall("Cannot replace the file", to, errno);
  }

  void Remove(const std::string& path) override {
    if (::unlink(path.c_str()) == -1) FailFileCall("Cannot remove the file", path, errno);
  }

  void CreateFolder(const std::string& path) override {
    if (::mkdir(path.c_str(), 0777) == 0) return;
    const int error = errno;
    if (error == EEXIST && Status(path).kind == FileKind::Folder) return;
    FailFileCall("Cannot create the folder", path, error);
  }
};

}  // namespace

FileOperations& SystemFiles() {
  static PosixFiles files;
  return files;
}

}  // namespace pellorin
