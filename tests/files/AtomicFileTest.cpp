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

// Makes the first, second, ... operation of the action fail until it runs through.
int OperationsUntilSuccess(const std::function<void(FailingFiles&)>& action,
                           const std::function<void()>& check) {
  for (int failAt = 1; failAt < 100; ++failAt) {
    SCOPED_TRACE("operation " + std::to_string(failAt) + " fails");
    FailingFiles files(SystemFiles());
    files.FailAt(failAt);
    const auto descriptors = OpenDescriptors();
    bool isReported = false;
    try {
      action(files);
    } catch (const FileError& error) {
      EXPECT_EQ(error.Description(), "Injected");
      isReported = true;
    }
    EXPECT_EQ(isReported, files.HasFailed()) << "a failure must be reported";
    EXPECT_EQ(OpenDescriptors(), descriptors);
    check();
    if (!files.HasFailed()) return failAt - 1;
  }
  ADD_FAILURE() << "the action never succeeds";
  return 100;
}

TEST(AtomicFile, WhateverFailsTheFileHoldsOldOrNewContentAndNothingElseIsLeft) {
  for (const std::string& before : {kOld, std::string()}) {
    SCOPED_TRACE(before.empty() ? "a new file" : "an existing file");
    const TemporaryFolder folder;
    int writtenThoughReported = 0;
    const auto prepare = [&] {
      fs::remove(folder / "a.ini");
      if (!before.empty()) folder.Write("a.ini", before);
    };
    prepare();
    const int operations = OperationsUntilSuccess(
        [&](FailingFiles& files) {
          WriteFileAtomically(files, folder / "a.ini", kNew, Access::OwnerAndFolderGroup);
          EXPECT_EQ(folder.Read("a.ini"), kNew);
        },
        [&] {
          const std::string content = folder.Has("a.ini") ? folder.Read("a.ini") : "";
          EXPECT_TRUE(content == kNew || content == before) << content;
          EXPECT_EQ(CountEntries(folder.Path()), content.empty() ? 0 : 1);
          if (content == kNew) ++writtenThoughReported;
          prepare();
        });
    EXPECT_GE(operations, before.empty() ? 10 : 11);  // from ResolveLinks to closing the folder
    EXPECT_GE(writtenThoughReported, 4) << "three failures after the rename, and the success";
    EXPECT_GE(operations + 1 - writtenThoughReported, 7) << "failures before the rename";
  }
}

TEST(AtomicFile, RemovingAndReadingReportEveryFailure) {
  const TemporaryFolder folder;
  folder.Write("a.xml", kOld);
  const auto remove = [&](FailingFiles& files) {
    RemoveFileDurably(files, folder / "a.xml");
    EXPECT_FALSE(folder.Has("a.xml"));
  };
  const auto read = [&](FailingFiles& files) { EXPECT_EQ(ReadFile(files, folder / "a.xml"), kOld); };
  EXPECT_EQ(OperationsUntilSuccess(remove, [&] { folder.Write("a.xml", kOld); }), 4);
  EXPECT_EQ(OperationsUntilSuccess(read, [] {}), 5);
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
  folder.Write("without list/listed.ini", kOld);  // must not get the same list from its folder
  folder.Write("plain.ini", kOld);
  const std::string listed = folder / "without list/listed.ini";
  if (!GiveAccessList(listed)) GTEST_SKIP() << "this file system has no access lists";
  ASSERT_TRUE(GiveAccessList(folder.Path(), kDefaultList));
  const auto before = AccessListOf(listed);
  for (const std::string& path : {listed, folder / "plain.ini"}) EXPECT_EQ(WriteError(path), 0) << path;
  EXPECT_EQ(AccessListOf(listed), before);
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

}  // namespace
}  // namespace pellorin::test
