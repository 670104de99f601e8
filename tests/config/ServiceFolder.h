// A service folder with a queue template, and what tests of the configuration ask about it.
#pragma once

#include <memory>
#include <string>

#include "base/Text.h"
#include "config/Ini.h"
#include "tests/support/TemporaryFolder.h"

namespace pellorin::test {

inline constexpr const char* kIniName = "Pellorin.ini";
inline constexpr const char* kTemplateName = "QUEUEDefinitions/defaultQUEUE.xml";
inline const std::string kTemplate =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!-- new queues start here -->\n"
    "<queue frequency=\"daily\" every=\"1\" days=\"\"/>\n";

class ServiceFolder : public TemporaryFolder {
 public:
  explicit ServiceFolder(const std::string& iniBytes = "[ADMIN:Pellorin]\r\n") {
    Write(kIniName, iniBytes);
    Write(kTemplateName, kTemplate);
  }

  std::string IniPath() const { return *this / kIniName; }
  std::string IniBytes() const { return Read(kIniName); }
  std::string QueuePath(const std::string& fileName) const { return *this / "QUEUEDefinitions/" + fileName; }
  std::string Queue(const std::string& fileName) const { return Read("QUEUEDefinitions/" + fileName); }
  bool HasQueue(const std::string& fileName) const { return Has("QUEUEDefinitions/" + fileName); }
  void WriteQueue(const std::string& fileName, const std::string& bytes) const {
    Write("QUEUEDefinitions/" + fileName, bytes);
  }

  std::unique_ptr<Ini> New(FileOperations& files = SystemFiles()) const {
    return std::make_unique<Ini>(files, Path(), LocaleConventions());
  }
  std::unique_ptr<Ini> Loaded(FileOperations& files = SystemFiles()) const {
    auto document = New(files);
    document->Load(kIniName);
    return document;
  }
};

// A service folder with its document, loaded.
class Store : public ServiceFolder {
 public:
  explicit Store(const std::string& iniBytes = "[ADMIN:Pellorin]\r\n")
      : ServiceFolder(iniBytes), document_(Loaded()) {}
  Ini& operator*() const { return *document_; }
  Ini* operator->() const { return document_.get(); }
  Section& operator[](const std::string& section) const { return *document_->GetSection(section); }

 private:
  std::unique_ptr<Ini> document_;
};

// A failure as one text, so that a test shows all of it: number, source, description and path.
inline std::string Failure(int number, const std::string& source, const std::string& description,
                           const std::string& path) {
  return std::to_string(number) + " | " + source + " | " + description + " | " + path;
}

inline constexpr const char* kNoFailure = "no failure";

template <typename Action>
std::string FailureOf(Action action) {
  try {
    action();
  } catch (const NumberedError& error) {
    return Failure(error.Number(), error.Source(), error.Description(), error.Path());
  }
  return kNoFailure;
}

inline std::string FailureOfSaving(Ini& document) {
  return FailureOf([&document] { document.Save(); });
}

inline void ExpectCannotSave(Ini& document, const std::string& section, const std::string& reason,
                             const std::string& path) {
  EXPECT_EQ(FailureOfSaving(document), Failure(50111, "PellorinConfig.exe, Section, Save",
                                               "Could not save section " + section + "\r\n" + reason, path));
}

// `values`: "name=value;name=value".
inline void SetValues(Section& section, const std::string& values) {
  if (values.empty()) return;
  for (const std::string& each : SplitAt(";", values)) {
    const std::size_t end = each.find('=');
    section.SetValue(each.substr(0, end), each.substr(end + 1));
  }
}

// "name{setting=value;...}" of every section, with its type's number in front and marks behind: "!"
// changed, "?" unusable queue.
inline std::string Shown(const Section& section) {
  std::string shown =
      std::to_string(static_cast<int>(section.SectionType)) + section.Name.substr(0, section.Name.find('|'));
  shown += '{';
  for (const auto& setting : section.Settings()) shown += setting->Name + "=" + setting->Value + ";";
  shown += '}';
  if (section.HasChanges()) shown += '!';
  if (!section.QueueProblem().empty()) shown += '?';
  return shown;
}

inline std::string Shown(const Ini& document) {
  std::string shown;
  for (const auto& section : document.Sections()) shown += Shown(*section) + "\n";
  return shown;
}

}  // namespace pellorin::test
