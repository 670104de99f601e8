// The mode, owner and group of files, as a test sets and compares them.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

namespace pellorin::test {

struct FileOwner {
  unsigned mode = 0;  // the twelve bits of access
  unsigned user = 0;
  unsigned group = 0;
  unsigned long long file = 0;  // another one after the file was replaced
};

inline FileOwner OwnerOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
  return {status.st_mode & 07777, status.st_uid, status.st_gid, status.st_ino};
}

inline void SetMode(const std::string& path, unsigned mode) {
  ASSERT_EQ(::chmod(path.c_str(), mode), 0) << path;
}

// Gives the file to another user and group. Does nothing unless the tests run as root.
inline void GiveAwayIfRoot(const std::string& path, unsigned user, unsigned group) {
  ASSERT_EQ(::geteuid() == 0 ? ::chown(path.c_str(), user, group) : 0, 0) << path;
}

inline void MakePipe(const std::string& path) {
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0) << path;
}

// The umask of a scope.
class ScopedUmask {
 public:
  explicit ScopedUmask(unsigned mask) : before_(::umask(mask)) {}
  ~ScopedUmask() { ::umask(before_); }
  ScopedUmask(const ScopedUmask&) = delete;
  ScopedUmask& operator=(const ScopedUmask&) = delete;

 private:
  mode_t before_;
};

}  // namespace pellorin::test
