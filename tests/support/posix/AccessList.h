// Access lists of files and folders, on file systems that have them.
#pragma once

#include <sys/xattr.h>

#include <array>
#include <optional>
#include <string>

namespace pellorin::test {

inline constexpr const char* kAccessList = "system.posix_acl_access";
inline constexpr const char* kDefaultList = "system.posix_acl_default";  // that new files in a folder get

// Lets user 4242 read, besides the owner. False where the file system has no access lists.
inline bool GiveAccessList(const std::string& path, const char* kind = kAccessList) {
  // Version 2, then for each entry its kind, its rights and its user; 0xFFFFFFFF where there is none.
  const std::string none = "\xFF\xFF\xFF\xFF";
  const auto entry = [](char kindOfEntry, char rights, const std::string& user) {
    return std::string{kindOfEntry, 0, rights, 0} + user;
  };
  const std::string list = std::string("\2\0\0\0", 4) + entry(1, 6, none) +
                           entry(2, 4, std::string("\x92\x10\0\0", 4)) + entry(4, 4, none) +
                           entry(0x10, 4, none) + entry(0x20, 0, none);
  return ::setxattr(path.c_str(), kind, list.data(), list.size(), 0) == 0;
}

// The list's bytes; nothing for a file without one.
inline std::optional<std::string> AccessListOf(const std::string& path) {
  std::array<char, 4096> list{};
  const ssize_t size = ::getxattr(path.c_str(), kAccessList, list.data(), list.size());
  if (size < 0) return std::nullopt;
  return std::string(list.data(), static_cast<std::size_t>(size));
}

}  // namespace pellorin::test
