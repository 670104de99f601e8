#include "files/AtomicFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <tuple>

#include "files/FileLookup.h"
#include "tests/support/FailingFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/posix/AccessList.h"
#include "tests/support/posix/FileOwners.h"

namespace pellorin::test {
namespace {

namespace fs = std::filesystem;
using Access = NewFileAccess;

const std::string kOld = "old content";
const std::string kNew = "the new content, which is longer";

std::ptrdiff_t CountEntries(const fs::path& folder) {
  return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

std::ptrdiff_t OpenDescriptors() {
  return CountEntries("/proc/self/fd");
}

// The error number of the failure; 0 without one. The failure must name the file.
int ErrorOf(const std::function<void()>& action, const std::string& path) {
  try {
    action();
    return 0;
  } catch (const FileError& error) {
    EXPECT_EQ(error.Path(), path);
    EXPECT_EQ(error.Source(), "PellorinConfig.exe, FileSystem");
    EXPECT_NE(error.Description(), "");
    return error.Number();
  }
}

int WriteError(const std::string& path, Access access = Access::OwnerAndFolderGroup) {
  return ErrorOf([&] { WriteFileAtomically(SystemFiles(), path, kNew, access); }, path);
}

// Makes the first, second, ... operation of the action fail until it runs through. Returns how many it has.
int FailEveryOperation(const std::function<void(FailingFiles&)>& action,
                       const std::function<void(bool succeeded)>& check) {
  for (int failAt = 1;; ++failAt) {
    FailingFiles files(SystemFiles());
    files.FailAt(failAt);
    const auto descriptors = OpenDescriptors();
    bool succeeded = true;
    try {
      action(files);
    } catch (const FileError& error) {
      EXPECT_EQ(error.Description(), "Injected");
      succeeded = false;
    }
    SCOPED_TRACE("operation " + std::to_string(failAt));
    EXPECT_EQ(OpenDescriptors(), descriptors);
    EXPECT_EQ(succeeded, !files.HasFailed()) << "a failure must be reported";
    check(succeeded);
    if (!files.HasFailed()) return failAt - 1;
    if (failAt == 100) throw std::logic_error("never runs through");
  }
}

TEST(AtomicFile, WhateverFailsTheFileHoldsOldOrNewContentAndNothingElseIsLeft) {
  for (const bool exists : {true, false}) {
    int outcomes[2] = {0, 0};
    const TemporaryFolder folder;
    const auto prepare = [&] { exists ? folder.Write("a.ini", kOld) : void(fs::remove(folder / "a.ini")); };
    prepare();
    const int operations = FailEveryOperation(
        [&](FailingFiles& files) {
          WriteFileAtomically(files, folder / "a.ini", kNew, Access::OwnerAndFolderGroup);
        },
        [&](bool succeeded) {
          const bool present = folder.Has("a.ini");
          const std::string content = present ? folder.Read("a.ini") : "";
          const bool isNew = content == kNew;
          EXPECT_TRUE(isNew || (exists ? content == kOld : !present)) << content;
          EXPECT_TRUE(isNew || !succeeded);
          EXPECT_EQ(CountEntries(folder.Path()), present ? 1 : 0);
          ++outcomes[isNew];
          prepare();
        });
    EXPECT_GE(operations, exists ? 11 : 10);  // from ResolveLinks to closing the folder
    EXPECT_GE(outcomes[0], 7);
    EXPECT_GE(outcomes[1], 4);  // three failures behind the rename, and success
  }
}

TEST(AtomicFile, RemovingAndReadingReportEveryFailure) {
  const TemporaryFolder folder;
  folder.Write("a.xml", kOld);
  const auto removed = [&](bool succeeded) {
    EXPECT_TRUE(!succeeded || !folder.Has("a.xml"));
    folder.Write("a.xml", kOld);
  };
  const auto remove = [&](FailingFiles& files) { RemoveFileDurably(files, folder / "a.xml"); };
  const auto read = [&](FailingFiles& files) { EXPECT_EQ(ReadFile(files, folder / "a.xml"), kOld); };
  EXPECT_EQ(FailEveryOperation(remove, removed), 4);
  EXPECT_EQ(FailEveryOperation(read, [](bool) {}), 5);
}

// Takes three bytes at a time, as a pipe or a nearly full disk may do.
class HesitantFiles : public FailingFiles {
 public:
  using FailingFiles::FailingFiles;
  std::size_t Write(FileHandle file, std::string_view bytes) override {
    return FailingFiles::Write(file, bytes.substr(0, 3));
  }
};

TEST(AtomicFile, ContinuesAfterShortWrites) {
  const TemporaryFolder folder;
  HesitantFiles files(SystemFiles());
  WriteFileAtomically(files, folder / "a.ini", kNew, Access::FolderUsual);
  EXPECT_EQ(folder.Read("a.ini"), kNew);
}

TEST(AtomicFile, NewFilesGetTheirAccessWhateverTheUmask) {
  const TemporaryFolder folder;
  const std::string limited = folder / std::string(255, 'n');  // the greatest length of a name
  GiveAwayIfRoot(folder.Path(), 0, 12345);
  for (const unsigned mask : {0077u, 0000u}) {
    {
      const ScopedUmask umask(mask);
      EXPECT_EQ(WriteError(limited), 0);
      EXPECT_EQ(WriteError(folder / "usual.xml", Access::FolderUsual), 0);
    }
    EXPECT_EQ(OwnerOf(limited).mode, 0640u);
    EXPECT_EQ(OwnerOf(limited).group, OwnerOf(folder.Path()).group);
    EXPECT_EQ(OwnerOf(folder / "usual.xml").mode, 0666u & ~mask);
    fs::remove(limited);
    fs::remove(folder / "usual.xml");
  }
}

TEST(AtomicFile, KeepsModeAndOwnerOfAnExistingFile) {
  const TemporaryFolder folder;
  const std::string path = folder / "a.ini";
  for (const unsigned mode : {0600u, 0664u, 0777u}) {
    folder.Write("a.ini", kOld);
    SetMode(path, mode);
    GiveAwayIfRoot(path, 65534, 12345);
    const FileOwner before = OwnerOf(path);
    EXPECT_EQ(WriteError(path), 0);
    const FileOwner after = OwnerOf(path);
    EXPECT_NE(after.file, before.file);
    EXPECT_EQ(std::tuple(after.mode, after.user, after.group), std::tuple(mode, before.user, before.group));
    fs::remove(path);
  }
}

TEST(AtomicFile, KeepsTheAccessListAndInheritsNone) {
  const TemporaryFolder folder;
  folder.Write("listed.ini", kOld);
  folder.Write("plain.ini", kOld);
  if (!GiveAccessList(folder / "listed.ini")) GTEST_SKIP() << "this file system has no access lists";
  ASSERT_TRUE(GiveAccessList(folder.Path(), kDefaultList));
  const auto before = AccessListOf(folder / "listed.ini");
  for (const char* name : {"listed.ini", "plain.ini"}) EXPECT_EQ(WriteError(folder / name), 0);
  EXPECT_EQ(AccessListOf(folder / "listed.ini"), before);
  EXPECT_EQ(AccessListOf(folder / "plain.ini"), std::nullopt) << "the folder hands its list to new files";
}

TEST(AtomicFile, WritesThroughSymbolicLinksAndKeepsThem) {
  const TemporaryFolder folder;
  folder.Write("there/real.ini", kOld);
  fs::create_symlink("there/middle.ini", folder / "link.ini");
  fs::create_symlink("real.ini", folder / "there/middle.ini");
  fs::create_symlink("circle.ini", folder / "circle.ini");
  EXPECT_EQ(WriteError(folder / "link.ini"), 0);
  EXPECT_EQ(WriteError(folder / "circle.ini"), ELOOP);
  EXPECT_EQ(folder.Read("there/real.ini"), kNew);
  for (const char* link : {"link.ini", "there/middle.ini"})
    EXPECT_TRUE(fs::is_symlink(folder / link)) << link;
  EXPECT_EQ(CountEntries(folder.Path()), 3);
  EXPECT_EQ(CountEntries(folder / "there"), 2);
}

TEST(AtomicFile, SaysWhyItCannotBeWrittenOrRead) {
  const TemporaryFolder folder;
  folder.Write("readonly.ini", kOld);
  fs::permissions(folder / "readonly.ini", fs::perms::owner_read);  // counts for root too
  fs::create_directory(folder / "folder.ini");
  MakePipe(folder / "pipe.ini");
  folder.Write("huge.ini", "");
  fs::resize_file(folder / "huge.ini", kLargestFile + 1);
  const auto descriptors = OpenDescriptors();
  const std::tuple<const char*, int, int> rows[] = {{"readonly.ini", EACCES, 0},
                                                    {"folder.ini", EISDIR, EISDIR},
                                                    {"pipe.ini", EINVAL, EINVAL},
                                                    {"absent/a.ini", ENOENT, ENOENT},
                                                    {"huge.ini", 0, EFBIG}};
  for (const auto& [name, writing, reading] : rows) {
    EXPECT_EQ(ErrorOf([&] { ReadFile(SystemFiles(), folder / name); }, folder / name), reading) << name;
    EXPECT_EQ(WriteError(folder / name), writing) << name;
  }
  EXPECT_EQ(folder.Read("readonly.ini"), kOld);
  EXPECT_EQ(CountEntries(folder.Path()), 4);
  EXPECT_EQ(OpenDescriptors(), descriptors);

  RemoveFileDurably(SystemFiles(), folder / "readonly.ini");
  EXPECT_FALSE(folder.Has("readonly.ini"));
  EXPECT_NO_THROW(RemoveFileDurably(SystemFiles(), folder / "readonly.ini"));
}

TEST(ReadFile, GivesTheWholeContent) {
  const TemporaryFolder folder;
  const std::string content = std::string("a\0\r\n", 4) + std::string(200000, 'x');
  folder.Write("large.ini", content);
  EXPECT_EQ(ReadFile(SystemFiles(), folder / "large.ini"), content);
}

}  // namespace
}  // namespace pellorin::test
