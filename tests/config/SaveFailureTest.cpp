// Every single file operation of a save and of a load fails in turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>

#include "tests/config/ServiceFolder.h"
#include "tests/support/FailingFiles.h"

namespace pellorin::test {
namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;  // path inside the folder -> bytes
using Names = std::vector<std::string>;

Files FilesIn(const ServiceFolder& folder) {
  Files files;
  for (const auto& entry : fs::recursive_directory_iterator(folder.Path())) {
    if (!entry.is_regular_file()) continue;
    const std::string name = fs::relative(entry.path(), folder.Path()).string();
    files[name] = folder.Read(name);
  }
  return files;
}

constexpr const char* kIni =
    "; by hand\r\n[ADMIN:Pellorin]\r\nSchedulerUsername=me\r\n[MAIL:gone]\r\nx=1\r\n"
    "[MAIL:changed]\r\n; kept\r\nServer=a\r\n[SQL:same]\r\ny=1\r\n";

class FilledFolder : public ServiceFolder {
 public:
  FilledFolder() : ServiceFolder(kIni) {
    WriteQueue("Gone.xml", "<queue every=\"1\"/>");
    WriteQueue("Changed.XML", "<!-- kept --><queue every=\"1\"/>");
    WriteQueue("Again.xml", "<queue every=\"7\"/>");
  }
  std::unique_ptr<Ini> Edited(FileOperations& files) const {
    auto document = Loaded(files);
    document->AdminSection().SetValue("SchedulerPassword", "secret");
    document->GetSection("MAIL:changed")->SetValue("Server", "b");
    document->Delete("MAIL:gone");
    document->Add("MAIL:gone", SectionType::Mail).SetValue("x", "2");
    document->Add("SQL:new", SectionType::Sql).SetValue("y", "2");
    document->GetSection("Changed")->SetValue("every", "2");
    for (const char* name : {"Gone", "Again"}) document->Delete(name);
    for (const char* name : {"New", "Again"}) document->AddQueue(name).SetValue("every", "3");
    return document;
  }
};

const Names kRemoved = {"Gone", "Again", "MAIL:gone"};
const Names kWritten = {"Again", "New", "SQL:new", "MAIL:gone", "Changed", "MAIL:changed", "ADMIN:Pellorin"};

Names Joined(Names names, const Names& further) {
  names.insert(names.end(), further.begin(), further.end());
  return names;
}

// Adds what the folder holds after each whole write.
class RecordingFiles : public FailingFiles {
 public:
  RecordingFiles(const ServiceFolder& folder, std::vector<Files>& states)
      : FailingFiles(SystemFiles()), folder_(folder), states_(states) {}

  void Rename(const std::string& from, const std::string& to) override {
    FailingFiles::Rename(from, to);
    states_.push_back(FilesIn(folder_));
  }
  void Remove(const std::string& path) override {
    FailingFiles::Remove(path);
    if (!path.ends_with(".tmp")) states_.push_back(FilesIn(folder_));
  }

 private:
  const ServiceFolder& folder_;
  std::vector<Files>& states_;
};

// Saves without failures. Returns what the folder holds before and after each whole write.
std::vector<Files> StatesOfSaving() {
  const FilledFolder folder;
  std::vector<Files> states = {FilesIn(folder)};
  RecordingFiles files(folder, states);
  const auto document = folder.Edited(files);
  document->Save();
  EXPECT_EQ(document->LastSave().written, kWritten);
  EXPECT_EQ(document->LastSave().removed, kRemoved);
  EXPECT_EQ(states.size(), kRemoved.size() + kWritten.size() + 1);
  return states;
}

void ExpectUsableError(const std::string& failure, const ServiceFolder& folder) {
  EXPECT_TRUE(failure.starts_with("50111 | PellorinConfig.exe, Section, Save | Could not save section "))
      << failure;
  EXPECT_NE(failure.find("Injected | " + folder.Path()), std::string::npos) << failure;
  EXPECT_EQ(std::count(failure.begin(), failure.end(), '|'), 3) << "no mark of deletion in " << failure;
  EXPECT_FALSE(failure.ends_with(".tmp")) << failure;
}

TEST(SaveFailure, WhateverFailsEveryFileHoldsWhatWasWrittenSoFar) {
  const std::vector<Files> states = StatesOfSaving();
  int unnoticed = 0;
  for (int failing = 1;; ++failing) {
    SCOPED_TRACE("operation " + std::to_string(failing) + " fails");
    const FilledFolder folder;
    FailingFiles files(SystemFiles());
    const auto document = folder.Edited(files);
    files.FailAt(failing);
    const std::string failure = FailureOfSaving(*document);
    if (!files.HasFailed()) break;
    const Ini::SaveReport first = document->LastSave();
    const auto reached = std::find(states.begin(), states.end(), FilesIn(folder)) - states.begin();
    if (failure == kNoFailure) {
      ++unnoticed;
      EXPECT_EQ(FilesIn(folder), states.back());
    } else {
      ExpectUsableError(failure, folder);
      // A write whose last synchronisation failed is on the disk but not known to stay there.
      const auto reported = std::ssize(first.written) + std::ssize(first.removed);
      EXPECT_TRUE(reached == reported || reached == reported + 1)
          << "the files are as after " << reached << " writes, but " << reported << " are reported";
    }

    files.FailAt(0);
    document->Save();
    EXPECT_EQ(Joined(first.removed, document->LastSave().removed), kRemoved);
    EXPECT_EQ(Joined(first.written, document->LastSave().written), kWritten);
    EXPECT_EQ(FilesIn(folder), states.back());
    EXPECT_FALSE(document->HasChanges());
  }
  // Only the search for a new queue's file in another letter case may fail without consequence: twice for
  // each of the two new queues.
  EXPECT_LE(unnoticed, 4);
}

TEST(SaveFailure, AWriteThatFailedOnTheDiskCanStillBeTakenBack) {
  bool hasFailed = true;
  for (int failing = 1; hasFailed; ++failing) {
    SCOPED_TRACE("operation " + std::to_string(failing) + " fails");
    const FilledFolder folder;
    FailingFiles files(SystemFiles());
    const auto document = folder.Edited(files);
    files.FailAt(failing);
    FailureOfSaving(*document);
    hasFailed = files.HasFailed();
    files.FailAt(0);
    for (const char* name : {"SQL:new", "MAIL:gone", "New", "Again"}) document->Delete(name);
    document->AdminSection().RollBack();
    document->GetSection("MAIL:changed")->SetValue("Server", "a");
    SetValues(*document->GetSection("Changed"), "every=1;days=monday");
    document->Save();
    EXPECT_EQ(folder.Queue("Changed.XML"), "<!-- kept -->\n<queue every=\"1\" days=\"monday\"/>\n");
    for (const char* name : {"New.xml", "Again.xml", "Gone.xml"}) EXPECT_FALSE(folder.HasQueue(name)) << name;
    const auto reloaded = folder.Loaded();
    for (const char* name : {"SQL:new", "MAIL:gone"}) EXPECT_EQ(reloaded->GetSection(name), nullptr);
  }
}

TEST(LoadFailure, WhateverFailsIsReportedAndChangesNothing) {
  const FilledFolder folder;
  const Files before = FilesIn(folder);
  const std::string whole = Shown(*folder.Loaded());
  int reported = 0;
  for (int failing = 1;; ++failing) {
    SCOPED_TRACE("operation " + std::to_string(failing) + " fails");
    FailingFiles files(SystemFiles());
    files.FailAt(failing);
    const auto document = folder.New(files);
    const std::string failure = FailureOf([&] { document->Load("Pellorin.ini"); });
    if (!files.HasFailed()) break;
    EXPECT_EQ(FilesIn(folder), before);
    if (failure != kNoFailure) {
      EXPECT_NE(failure.find("Injected"), std::string::npos) << failure;
      EXPECT_NE(failure.find(folder.Path()), std::string::npos) << failure;
      ++reported;
      continue;
    }
    // A queue that could not be read says so and is not written; a search in other letter case that failed
    // leaves the name as given.
    std::string shown = whole;
    for (const auto& section : document->Sections()) {
      if (section->QueueProblem().empty()) continue;
      EXPECT_EQ(section->QueueProblem(), folder.QueuePath(section->QueueFileName()) + "\r\nInjected");
      const std::size_t begin = shown.find("3" + section->Name + "{");
      shown.replace(begin, shown.find('\n', begin) - begin, "3" + section->Name + "{}?");
      ++reported;
    }
    EXPECT_EQ(Shown(*document), shown);
  }
  EXPECT_GE(reported, 20);
}

}  // namespace
}  // namespace pellorin::test
