#include "platform/posix/FileAccess.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "platform/posix/FileFailure.h"

namespace pellorin {
namespace {

constexpr mode_t kAccessBits = 07777;

[[noreturn]] void FailToKeepOwner(const std::string& path, int error) {
  const std::string reason = std::generic_category().message(error);
  throw FileError(
      error,
      "The file's owner and group cannot be kept: " + reason +
          ". Start the program as the file's owner: the service could lose access to the file otherwise",
      path);
}

// If `from` has no list, removes the one that the new file inherited. False, with errno, when that fails.
bool CopyAccessList(int to, const std::string& from) {
  constexpr const char* kAccessList = "system.posix_acl_access";
  std::array<char, 65536> list{};  // the system's limit
  const ssize_t size = ::getxattr(from.c_str(), kAccessList, list.data(), list.size());
  if (size >= 0) return ::fsetxattr(to, kAccessList, list.data(), static_cast<std::size_t>(size), 0) == 0;
  if (errno == ENOTSUP) return true;
  return errno == ENODATA && (::fremovexattr(to, kAccessList) == 0 || errno == ENODATA || errno == ENOTSUP);
}

}  // namespace

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

void CopyFileAccess(int to, const std::string& from) {
  struct stat wanted {};
  struct stat present {};
  if (::stat(from.c_str(), &wanted) == -1) FailFileCall("Cannot examine the file", from, errno);
  if (::fstat(to, &present) == -1) FailFileCall("Cannot examine the file", {}, errno);
  const uid_t owner = wanted.st_uid == present.st_uid ? static_cast<uid_t>(-1) : wanted.st_uid;
  const gid_t group = wanted.st_gid == present.st_gid ? static_cast<gid_t>(-1) : wanted.st_gid;
  const bool isForeign = owner != static_cast<uid_t>(-1) || group != static_cast<gid_t>(-1);
  if (isForeign && ::fchown(to, owner, group) == -1) FailToKeepOwner(from, errno);
  if (!CopyAccessList(to, from)) FailFileCall("The file's access list cannot be kept", from, errno);
  if (::fchmod(to, wanted.st_mode & kAccessBits) == -1) {
    FailFileCall("The file's mode cannot be kept", from, errno);
  }
}

}  // namespace pellorin
