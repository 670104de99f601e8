#include "platform/FileOperations.h"
#include "platform/Paths.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

namespace pellorin {
namespace {

constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t kAccessBits = 07777;
constexpr int kMostLinks = 40;  // as many as the system itself follows

std::string FullPath(const std::string& path) {
  if (path.empty()) return path;
  std::error_code failure;
  const std::filesystem::path full = std::filesystem::absolute(path, failure);
  return failure ? path : full.string();
}

[[noreturn]] void Fail(const char* whatCannotBeDone, const std::string& path, int error) {
  throw FileError(error, std::string(whatCannotBeDone) + ": " + std::generic_category().message(error), path);
}

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
  if (descriptor == -1) Fail(whatCannotBeDone, path, errno);
  return descriptor;
}

FileKind KindOf(mode_t mode) {
  if (S_ISREG(mode)) return FileKind::File;
  return S_ISDIR(mode) ? FileKind::Folder : FileKind::Other;
}

// Nothing when the path is no symbolic link.
std::optional<std::string> LinkTarget(const std::string& path) {
  std::string target(256, '\0');
  for (;;) {
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    if (length == -1) {
      if (errno == EINVAL || errno == ENOENT || errno == ENOTDIR) return std::nullopt;
      Fail("Cannot follow the symbolic link", path, errno);
    }
    if (static_cast<std::size_t>(length) < target.size()) {
      target.resize(static_cast<std::size_t>(length));
      return target;
    }
    target.resize(target.size() * 2);
  }
}

// False, and errno, when that fails. Only root and members of a group may give a file to it: for others the
// file keeps their own group.
bool LimitToOwnerAndFolderGroup(int descriptor, const std::string& folder) {
  struct stat folderStatus {};
  struct stat fileStatus {};
  if (::stat(folder.c_str(), &folderStatus) == -1 || ::fstat(descriptor, &fileStatus) == -1) return false;
  if (fileStatus.st_gid != folderStatus.st_gid &&
      ::fchown(descriptor, static_cast<uid_t>(-1), folderStatus.st_gid) == -1 && errno != EPERM &&
      errno != EINVAL) {
    return false;
  }
  return ::fchmod(descriptor, S_IRUSR | S_IWUSR | S_IRGRP) == 0;
}

[[noreturn]] void FailToKeepOwner(const std::string& path, int error) {
  const std::string reason = std::generic_category().message(error);
  throw FileError(
      error,
      "The file's owner and group cannot be kept: " + reason +
          ". Start the program as the file's owner: the service could lose access to the file otherwise",
      path);
}

// False, and errno, when that fails. A file without a list takes away one that the new file has from its
// folder.
bool CopyAccessList(int to, const std::string& from) {
  constexpr const char* kAccessList = "system.posix_acl_access";
  std::array<char, 65536> list{};  // the system's limit
  const ssize_t size = ::getxattr(from.c_str(), kAccessList, list.data(), list.size());
  if (size >= 0) return ::fsetxattr(to, kAccessList, list.data(), static_cast<std::size_t>(size), 0) == 0;
  if (errno == ENOTSUP) return true;
  return errno == ENODATA && (::fremovexattr(to, kAccessList) == 0 || errno == ENODATA || errno == ENOTSUP);
}

class PosixFiles : public FileOperations {
 public:
  FileStatus Status(const std::string& path) override {
    struct stat status {};
    if (::stat(path.c_str(), &status) == -1) {
      if (errno == ENOENT || errno == ENOTDIR) return {};
      Fail("Cannot examine the file", path, errno);
    }
    return {KindOf(status.st_mode), static_cast<std::uint64_t>(status.st_size)};
  }

  // Root may write everything; a file that nobody may write was protected on purpose and counts for root too.
  bool IsReadOnly(const std::string& path) override {
    struct stat status {};
    if (::stat(path.c_str(), &status) == -1) Fail("Cannot examine the file", path, errno);
    if ((status.st_mode & kAnyWrite) == 0) return true;
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0) return false;
    return errno == EACCES || errno == EPERM || errno == EROFS;
  }

  std::string ResolveLinks(const std::string& path) override {
    std::string current = path;
    for (int links = 0; links <= kMostLinks; ++links) {
      const std::optional<std::string> target = LinkTarget(current);
      if (!target) return current;
      current = target->starts_with('/') ? *target : JoinPath(FolderOf(current), *target);
    }
    Fail("Cannot follow the symbolic link", path, ELOOP);
  }

  std::vector<FolderEntry> List(const std::string& folder) override {
    const auto close = [](DIR* opened) { ::closedir(opened); };
    const std::unique_ptr<DIR, decltype(close)> opened(::opendir(folder.c_str()), close);
    if (!opened) Fail("Cannot list the folder", folder, errno);
    std::vector<FolderEntry> entries;
    errno = 0;
    while (const dirent* entry = ::readdir(opened.get())) {
      std::string name = entry->d_name;
      if (name != "." && name != "..") entries.push_back({std::move(name), entry->d_type == DT_DIR});
      errno = 0;
    }
    if (errno != 0) Fail("Cannot list the folder", folder, errno);
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
    if (descriptor == -1) Fail("Cannot create a file in the folder", path, errno);
    if (limited && !LimitToOwnerAndFolderGroup(descriptor, FolderOf(path))) {
      const int error = errno;
      ::close(descriptor);
      ::unlink(path.c_str());
      Fail("Cannot limit the access to a new file", path, error);
    }
    return descriptor;
  }

  std::size_t Read(FileHandle file, char* buffer, std::size_t size) override {
    const ssize_t count = RepeatWhenInterrupted([&] { return ::read(Descriptor(file), buffer, size); });
    if (count == -1) Fail("Cannot read the file", {}, errno);
    return static_cast<std::size_t>(count);
  }

  std::size_t Write(FileHandle file, std::string_view bytes) override {
    const ssize_t count =
        RepeatWhenInterrupted([&] { return ::write(Descriptor(file), bytes.data(), bytes.size()); });
    if (count == -1) Fail("Cannot write the file", {}, errno);
    return static_cast<std::size_t>(count);
  }

  void CopyAccess(FileHandle to, const std::string& from) override {
    struct stat wanted {};
    struct stat present {};
    if (::stat(from.c_str(), &wanted) == -1) Fail("Cannot examine the file", from, errno);
    if (::fstat(Descriptor(to), &present) == -1) Fail("Cannot examine the file", {}, errno);
    const uid_t owner = wanted.st_uid == present.st_uid ? static_cast<uid_t>(-1) : wanted.st_uid;
    const gid_t group = wanted.st_gid == present.st_gid ? static_cast<gid_t>(-1) : wanted.st_gid;
    const bool isOthers = owner != static_cast<uid_t>(-1) || group != static_cast<gid_t>(-1);
    if (isOthers && ::fchown(Descriptor(to), owner, group) == -1) FailToKeepOwner(from, errno);
    if (!CopyAccessList(Descriptor(to), from)) Fail("The file's access list cannot be kept", from, errno);
    if (::fchmod(Descriptor(to), wanted.st_mode & kAccessBits) == -1) {
      Fail("The file's mode cannot be kept", from, errno);
    }
  }

  void Synchronize(FileHandle file) override {
    if (RepeatWhenInterrupted([&] { return ::fsync(Descriptor(file)); }) == 0) return;
    const int error = errno;
    struct stat status {};
    const bool folder = ::fstat(Descriptor(file), &status) == 0 && S_ISDIR(status.st_mode);
    // Some file systems cannot synchronise folders and need not.
    if (folder && (error == EINVAL || error == ENOTSUP)) return;
    Fail("Cannot bring the file to the disk", {}, error);
  }

  void Close(FileHandle file) override {
    // An interrupted close has released the descriptor nevertheless; a second one could hit another file.
    if (::close(Descriptor(file)) == -1 && errno != EINTR) Fail("Cannot close the file", {}, errno);
  }

  void Rename(const std::string& from, const std::string& to) override {
    if (::rename(from.c_str(), to.c_str()) == -1) Fail("Cannot replace the file", to, errno);
  }

  void Remove(const std::string& path) override {
    if (::unlink(path.c_str()) == -1) Fail("Cannot remove the file", path, errno);
  }

  void CreateFolder(const std::string& path) override {
    if (::mkdir(path.c_str(), 0777) == 0) return;
    const int error = errno;
    if (error == EEXIST && Status(path).kind == FileKind::Folder) return;
    Fail("Cannot create the folder", path, error);
  }
};

}  // namespace

int ErrorNumberOf(FileProblem problem) {
  switch (problem) {
    case FileProblem::Missing:
      return ENOENT;
    case FileProblem::IsFolder:
      return EISDIR;
    case FileProblem::IsNoFolder:
      return ENOTDIR;
    case FileProblem::NotOrdinary:
      return EINVAL;
    case FileProblem::ReadOnly:
      return EACCES;
    case FileProblem::TooLarge:
      return EFBIG;
    case FileProblem::NotWritten:
      break;
  }
  return EIO;
}

bool FileError::IsMissing() const {
  return Number() == ENOENT || Number() == ENOTDIR;
}

FileError::FileError(int systemError, const std::string& description, std::string path)
    : NumberedError(systemError, ErrorSource("FileSystem"), description, FullPath(path)) {}

FileOperations& SystemFiles() {
  static PosixFiles files;
  return files;
}

}  // namespace pellorin
