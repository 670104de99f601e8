// Every single file operation of a save and of a load fails in turn.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "tests/config/ServiceFolder.h"
#include "tests/support/FailingFiles.h"

namespace pellorin {
namespace {

namespace fs = std::filesystem;
using test::FailingFiles;
using test::ServiceFolder;
using test::Shown;
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

  void Start() {
    FailAt(0);
    states = {FilesIn(folder_)};
    changedAt.clear();
  }
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

void FillFolder(const ServiceFolder& folder) {
  folder.WriteQueue("Gone.xml", "<queue every=\"1\"/>");
  folder.WriteQueue("Changed.XML", "<!-- kept --><queue every=\"1\"/>");
  folder.WriteQueue("Again.xml", "<queue every=\"7\"/>");
}

void Edit(Ini& document) {
  document.AdminSection().SetValue("SchedulerPassword", "secret");
  document.GetSection("MAIL:changed")->SetValue("Server", "b");
  document.Delete("MAIL:gone");
  document.Add("MAIL:gone", SectionType::Mail).SetValue("x", "2");
  document.Add("SQL:new", SectionType::Sql).SetValue("y", "2");
  document.GetSection("Changed")->SetValue("every", "2");
  for (const char* name : {"Gone", "Again"}) document.Delete(name);
  for (const char* name : {"New", "Again"}) {
    Section& queue = document.Add(name, SectionType::Queue);
    queue.Load();
    queue.SetValue("every", "3");
  }
}

const Names kRemoved = {"Gone", "Again", "MAIL:gone"};
const Names kWritten = {"Again", "New", "SQL:new", "MAIL:gone", "Changed", "MAIL:changed", "ADMIN:Pellorin"};

void ExpectStillMarked(const Ini& document, std::size_t removed, std::size_t written) {
  std::size_t marked = 0;
  for (const auto& section : document.Sections()) {
    const auto place = std::find(kWritten.begin(), kWritten.end(), section->Name);
    if (section->IsDeleted())
      ++marked;
    else if (place != kWritten.end())
      EXPECT_EQ(section->HasChanges(), place - kWritten.begin() >= static_cast<std::ptrdiff_t>(written))
          << section->Name;
    else
      EXPECT_FALSE(section->HasChanges()) << section->Name;
  }
  EXPECT_EQ(marked, kRemoved.size() - removed);
}

// What a failed save reports has happened, and nothing beyond it but the write that failed.
void ExpectHonestReport(const Ini& document, std::size_t changes) {
  const auto& [written, removed] = document.LastSave();
  EXPECT_EQ(removed, Names(kRemoved.begin(), kRemoved.begin() + std::ptrdiff_t(removed.size())));
  EXPECT_EQ(written, Names(kWritten.begin(), kWritten.begin() + std::ptrdiff_t(written.size())));
  EXPECT_TRUE(written.empty() || removed == kRemoved);
  const std::size_t reported = written.size() + removed.size();
  // A write whose last synchronisation failed is on the disk but not known to stay there.
  EXPECT_TRUE(changes == reported || changes == reported + 1) << changes << " of " << reported;
  ExpectStillMarked(document, removed.size(), written.size());
}

void ExpectUsableError(const NumberedError& error, const ServiceFolder& folder) {
  EXPECT_EQ(error.Number(), 50111);
  EXPECT_EQ(error.Source(), "PellorinConfig.exe, Section, Save");
  EXPECT_TRUE(error.Description().starts_with("Could not save section ")) << error.Description();
  EXPECT_TRUE(error.Description().ends_with("Injected")) << error.Description();
  EXPECT_TRUE(error.Path().starts_with(folder.Path()) && !IsTemporary(error.Path())) << error.Path();
}

// What the folder holds after each whole write of a save without failures.
struct Course {
  Course() : folder(kIni), files(folder) {
    FillFolder(folder);
    const auto document = folder.Loaded(files);
    Edit(*document);
    files.Start();
    document->Save();
    operations = files.Count();
    written = document->LastSave().written;
    removed = document->LastSave().removed;
  }

  std::size_t ChangesBefore(int operation) const {
    return static_cast<std::size_t>(std::count_if(files.changedAt.begin(), files.changedAt.end(),
                                                  [operation](int at) { return at < operation; }));
  }

  ServiceFolder folder;
  RecordingFiles files;
  int operations = 0;
  Names written, removed;
};

TEST(SaveFailure, WhateverFailsEveryFileHoldsWhatWasWrittenSoFar) {
  const Course course;
  ASSERT_EQ(course.removed, kRemoved);
  ASSERT_EQ(course.written, kWritten);
  ASSERT_EQ(course.files.states.size(), kRemoved.size() + kWritten.size() + 1);
  int unnoticed = 0;
  for (int failing = 1; failing <= course.operations; ++failing) {
    SCOPED_TRACE("operation " + std::to_string(failing));
    const ServiceFolder folder(kIni);
    FillFolder(folder);
    FailingFiles files(SystemFiles());
    const auto document = folder.Loaded(files);
    Edit(*document);
    files.FailAt(failing);
    try {
      document->Save();
      ++unnoticed;
      EXPECT_EQ(FilesIn(folder), course.files.states.back());
    } catch (const NumberedError& error) {
      const std::size_t changes = course.ChangesBefore(failing);
      EXPECT_EQ(FilesIn(folder), course.files.states[changes]);
      ExpectUsableError(error, folder);
      ExpectHonestReport(*document, changes);
    }
    EXPECT_TRUE(files.HasFailed());
    files.FailAt(0);
    document->Save();
    EXPECT_EQ(FilesIn(folder), course.files.states.back());
    EXPECT_FALSE(document->HasChanges());
    EXPECT_EQ(Shown(*folder.Loaded()), Shown(*course.folder.Loaded()));
  }
  // Only looking for a new queue's file in other letter case may fail without consequence, in the two new
  // queues' two steps each.
  EXPECT_LE(unnoticed, 4);
}

TEST(SaveFailure, AWriteThatFailedOnTheDiskCanStillBeTakenBack) {
  const Course course;
  for (int failing = 1; failing <= course.operations; ++failing) {
    SCOPED_TRACE("operation " + std::to_string(failing));
    const ServiceFolder folder(kIni);
    FillFolder(folder);
    FailingFiles files(SystemFiles());
    const auto document = folder.Loaded(files);
    Edit(*document);
    files.FailAt(failing);
    EXPECT_NO_FATAL_FAILURE(test::FailureOf([&] { document->Save(); }));
    files.FailAt(0);
    for (const char* name : {"SQL:new", "MAIL:gone", "New", "Again"}) document->Delete(name);
    document->AdminSection().RollBack();
    document->GetSection("MAIL:changed")->SetValue("Server", "a");
    document->GetSection("Changed")->SetValue("every", "1");
    document->GetSection("Changed")->SetValue("days", "monday");
    document->Save();
    EXPECT_EQ(folder.Queue("Changed.XML"), "<!-- kept -->\n<queue every=\"1\" days=\"monday\"/>\n");
    for (const char* name : {"New.xml", "Again.xml", "Gone.xml"}) EXPECT_FALSE(folder.HasQueue(name)) << name;
    const auto reloaded = folder.Loaded();
    EXPECT_EQ(reloaded->GetSection("SQL:new"), nullptr);
    EXPECT_EQ(reloaded->GetSection("MAIL:gone"), nullptr);
  }
}

TEST(LoadFailure, WhateverFailsIsReportedAndChangesNothing) {
  int reported = 0;
  const ServiceFolder folder(kIni);
  FillFolder(folder);
  const Files before = FilesIn(folder);
  const std::string whole = Shown(*folder.Loaded());
  for (int failing = 1;; ++failing) {
    SCOPED_TRACE("operation " + std::to_string(failing));
    FailingFiles files(SystemFiles());
    files.FailAt(failing);
    const auto document = folder.New(files);
    const std::string failure = test::FailureOf([&] { document->Load("Pellorin.ini"); });
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
}  // namespace pellorin
