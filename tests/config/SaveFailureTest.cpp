// Every single file operation of a save and of a load fails in turn.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
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

bool IsTemporary(const std::string& path) {
  return path.ends_with(".tmp");
}

// Keeps what the folder holds after each whole write, and at which operation that happened.
class RecordingFiles : public FailingFiles {
 public:
  explicit RecordingFiles(const ServiceFolder& folder) : FailingFiles(SystemFiles()), folder_(folder) {}

  void Rename(const std::string& from, const std::string& to) override {
    FailingFiles::Rename(from, to);
    Record();
  }
  void Remove(const std::string& path) override {
    FailingFiles::Remove(path);
    if (!IsTemporary(path)) Record();
  }

  std::vector<Files> states;
  std::vector<int> changedAt;

 private:
  void Record() {
    changedAt.push_back(Count());
    states.push_back(FilesIn(folder_));
  }
  const ServiceFolder& folder_;
};

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

void ExpectUsableError(const NumberedError& error, const ServiceFolder& folder) {
  EXPECT_EQ(error.Number(), 50111);
  EXPECT_EQ(error.Source(), "PellorinConfig.exe, Section, Save");
  EXPECT_TRUE(error.Description().starts_with("Could not save section ")) << error.Description();
  EXPECT_TRUE(error.Description().ends_with("Injected")) << error.Description();
  EXPECT_EQ(error.Description().find('|'), std::string::npos) << "the mark of deletion";
  EXPECT_TRUE(error.Path().starts_with(folder.Path()) && !IsTemporary(error.Path())) << error.Path();
}

// What the folder holds after each whole write of a save without failures.
struct Course {
  Course() {
    const auto document = folder.Edited(files);
    files.FailAt(0);
    files.states = {FilesIn(folder)};
    document->Save();
    operations = files.Count();
    EXPECT_EQ(document->LastSave().written, kWritten);
    EXPECT_EQ(document->LastSave().removed, kRemoved);
    EXPECT_EQ(files.states.size(), kRemoved.size() + kWritten.size() + 1);
  }

  std::ptrdiff_t ChangesBefore(int operation) const {
    return std::count_if(files.changedAt.begin(), files.changedAt.end(),
                         [operation](int at) { return at < operation; });
  }

  FilledFolder folder;
  RecordingFiles files{folder};
  int operations = 0;
};

TEST(SaveFailure, WhateverFailsEveryFileHoldsWhatWasWrittenSoFar) {
  const Course course;
  int unnoticed = 0;
  for (int failing = 1; failing <= course.operations; ++failing) {
    SCOPED_TRACE("operation " + std::to_string(failing));
    const FilledFolder folder;
    FailingFiles files(SystemFiles());
    const auto document = folder.Edited(files);
    files.FailAt(failing);
    try {
      document->Save();
      ++unnoticed;
      EXPECT_EQ(FilesIn(folder), course.files.states.back());
    } catch (const NumberedError& error) {
      const auto changes = static_cast<std::size_t>(course.ChangesBefore(failing));
      EXPECT_EQ(FilesIn(folder), course.files.states[changes]);
      ExpectUsableError(error, folder);
      // A write whose last synchronisation failed is on the disk but not known to stay there.
      const std::size_t reported = document->LastSave().written.size() + document->LastSave().removed.size();
      EXPECT_TRUE(changes == reported || changes == reported + 1) << changes << " of " << reported;
    }
    EXPECT_TRUE(files.HasFailed());
    const Ini::SaveReport first = document->LastSave();
    files.FailAt(0);
    document->Save();
    EXPECT_EQ(Joined(first.removed, document->LastSave().removed), kRemoved);
    EXPECT_EQ(Joined(first.written, document->LastSave().written), kWritten);
    EXPECT_EQ(FilesIn(folder), course.files.states.back());
    EXPECT_FALSE(document->HasChanges());
    EXPECT_EQ(Shown(*folder.Loaded()), Shown(*course.folder.Loaded()));
  }
  // Only looking for a new queue's file in other letter case may fail without consequence, in the two new
  // queues' two steps each.
  EXPECT_LE(unnoticed, 4);
}

TEST(SaveFailure, AWriteThatFailedOnTheDiskCanStillBeTakenBack) {
  const int operations = Course().operations;
  for (int failing = 1; failing <= operations; ++failing) {
    SCOPED_TRACE("operation " + std::to_string(failing));
    const FilledFolder folder;
    FailingFiles files(SystemFiles());
    const auto document = folder.Edited(files);
    files.FailAt(failing);
    FailureOfSaving(*document);
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
  int reported = 0;
  const FilledFolder folder;
  const Files before = FilesIn(folder);
  const std::string whole = Shown(*folder.Loaded());
  for (int failing = 1;; ++failing) {
    SCOPED_TRACE("operation " + std::to_string(failing));
    FailingFiles files(SystemFiles());
    files.FailAt(failing);
    const auto document = folder.New(files);
    const std::string failure = FailureOf([&] { document->Load("Pellorin.ini"); });
    if (!files.HasFailed()) break;
    EXPECT_EQ(FilesIn(folder), before);
    if (failure != "no failure") {
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
