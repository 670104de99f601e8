// Reading and writing sections: those of Pellorin.ini and the queues' files.
#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "base/AnsiText.h"
#include "base/Utf8.h"
#include "config/Ini.h"
#include "config/PasswordScrambling.h"
#include "config/Section.h"
#include "files/AtomicFile.h"
#include "files/FileLookup.h"

namespace pellorin {
namespace {

NumberedError CannotSave(const std::string& name, const std::string& reason, const std::string& path) {
  return {50111, "PellorinConfig.exe, Section, Save", "Could not save section " + name + "\r\n" + reason,
          path};
}

constexpr const char* kTwinProblem =
    "The file holds two sections of this name, and only the first can be reached. Please rename one in the "
    "file.";

std::string UnwritableReason(const QueueDefinition& definition) {
  return "What would be written does not load as the same settings (encoding " + definition.Encoding() +
         "). Please save the file in UTF-8 with a text editor.";
}

// The line of one setting as Pellorin.ini holds it. Throws the reason, a text, when it cannot hold it.
struct CannotBeWritten {
  std::string reason;
};

std::string AnsiLine(const Setting& setting) {
  const auto clear = Utf8ToAnsi(setting.Value);
  if (!clear)
    throw CannotBeWritten{"The value of " + setting.Name +
                          " holds a character that Pellorin.ini cannot hold (it is outside code page 1252)."};
  const auto name = Utf8ToAnsi(setting.Name);
  const std::string value =
      IsPasswordName(setting.Name) ? *Utf8ToAnsi(EncryptString(setting.Value, kPasswordKey)) : *clear;
  const std::string line = name.value_or("") + "=" + value;
  if (!name || line.find_first_of(std::string_view("\r\n\0", 3)) != std::string::npos)
    throw CannotBeWritten{"The value of " + setting.Name + " holds a line break or a NUL character."};
  return line;
}

std::vector<std::string> AnsiLines(const Section& section) {
  std::vector<std::string> lines;
  std::size_t size = 1;  // the buffer that the section is read with ends with one NUL more than the lines
  for (const auto& setting : section.Settings()) {
    lines.push_back(AnsiLine(*setting));
    size += lines.back().size() + 1;
  }
  if (size > kProfileBufferSize)
    throw CannotBeWritten{"Its settings are longer than the 10,000 bytes that can be read again."};
  return lines;
}

// A section that was never loaded must not replace one that the file holds, and must be found again.
void RequireRoomFor(const std::string& ansiName, const ProfileFile& file) {
  if (file.HasSection(ansiName))
    throw CannotBeWritten{"The file already holds a section of this name that was not loaded."};
  const std::size_t names = file.SectionNames(std::numeric_limits<std::size_t>::max()).buffer.size();
  if (names + ansiName.size() + 1 + 2 > kProfileBufferSize)
    throw CannotBeWritten{"The section names would be longer than the 10,000 bytes that can be read again."};
}

}  // namespace

void Section::Load() {
  if (SectionType == pellorin::SectionType::Queue)
    LoadQueue();
  else
    LoadFrom(Owner->File().Read());
}

void Section::LoadFrom(const ProfileFile& file) {
  isOriginal_ = true;
  try {
    constexpr std::size_t kUsualEntries = 16;
    settings_.Reserve(kUsualEntries);
    cutOffOnLoading_ = file.ForEachLine(Utf8ToAnsi(Name).value_or(""), kProfileBufferSize,
                                        [this](std::string_view line) { AddLoadedLines(line); });
  } catch (const CollectionError& error) {
    throw CollectionError(error.Number(), error.Source(),
                          "Section " + Name + " holds an entry twice: " + error.Description(), Owner->Path());
  }
}

// A NUL ends a line as well.
void Section::AddLoadedLines(std::string_view ansiText) {
  for (std::size_t nul = ansiText.find('\0'); nul != std::string_view::npos; nul = ansiText.find('\0')) {
    if (nul > 0) AddLoadedLine(ansiText.substr(0, nul));
    ansiText.remove_prefix(nul + 1);
  }
  if (!ansiText.empty()) AddLoadedLine(ansiText);
}

void Section::AddLoadedLine(std::string_view ansiLine) {
  const std::size_t separator = ansiLine.find('=');
  if (separator == std::string_view::npos)
    throw NumberedError(50110, "PellorinConfig.exe, Section, Load",
                        "Could not load a parameter from string " + AnsiToUtf8(ansiLine) +
                            ". Parameters are expected to be in the form Name=Value. Section " + Name +
                            ". Please check configuration settings for Pellorin.",
                        Owner->Path());
  AddLoaded(AnsiToUtf8(ansiLine.substr(0, separator)), AnsiToUtf8(ansiLine.substr(separator + 1)));
}

void Section::AddLoaded(std::string name, std::string value) {
  if (IsPasswordName(name)) value = DecryptString(value, kPasswordKey);
  Setting& setting = Add(std::move(name), std::move(value));
  setting.OriginalValue = setting.Value;
}

void Section::LoadQueue() {
  const std::string fileName = Owner->Queues().FileNameOf(Name);
  const bool hasFile = QueueFolder::StaysInside(Name) && !Owner->IsAwaitingRemoval(fileName) &&
                       Owner->Files().Status(Owner->Queues().PathOf(fileName)).kind != FileKind::Missing;
  if (hasFile) queueFileName_ = fileName;
  ReadQueueDocument(hasFile ? Owner->Queues().PathOf(fileName) : Owner->Queues().TemplatePath());
}

void Section::LoadQueueFile(const std::string& fileName) {
  queueFileName_ = fileName;
  const std::string path = Owner->Queues().PathOf(fileName);
  const std::string problem = QueueFolder::NameProblem(fileName);
  if (problem.empty()) {
    ReadQueueDocument(path);
  } else {
    isOriginal_ = true;
    queueProblem_ = Escaped(path) + "\r\n" + problem;
  }
}

void Section::ReadQueueDocument(const std::string& path) {
  isOriginal_ = true;
  try {
    queueDocument_.emplace(ReadFile(Owner->Files(), path));
    if (!queueDocument_->HasQueueElement()) queueProblem_ = path + "\r\nIt holds no element \"queue\".";
  } catch (const CollectionError&) {
    throw;
  } catch (const NumberedError& error) {  // an unusable file is a queue without settings
    queueProblem_ = path + "\r\n" + error.Description();
    return;
  }
  try {
    AddAttributes(*queueDocument_);
    hasUnwritableEncoding_ = !CanKeepEncoding();
  } catch (const CollectionError& error) {
    throw CollectionError(error.Number(), error.Source(),
                          "Queue " + Name + " holds an attribute twice: " + error.Description(), path);
  } catch (const NumberedError& error) {
    throw NumberedError(error.Number(), error.Source(), "Queue " + Name + ": " + error.Description(), path);
  }
}

// What the document holds twice is refused as a duplicate.
void Section::AddAttributes(const QueueDefinition& definition) {
  auto attributes = definition.Attributes();
  settings_.Reserve(attributes.size());
  for (auto& [name, value] : attributes) AddLoaded(std::move(name), std::move(value));
}

// Some encodings cannot be written back, and a password is never scrambled here: what a save would write is
// read again before it replaces the file.
bool Section::LoadsAgainFrom(const std::string& bytes) const {
  Section loaded;
  try {
    const QueueDefinition definition(bytes);
    if (!definition.HasQueueElement()) return false;
    loaded.AddAttributes(definition);
  } catch (const NumberedError&) {
    return false;
  }
  return loaded.Count() == Count() &&
         std::all_of(settings_.begin(), settings_.end(), [&](const auto& setting) {
           const Setting* again = loaded.GetSetting(setting->Name);
           return again != nullptr && again->Value == setting->Value;
         });
}

// Tried before anything is changed, so that showing such a queue need not change it. The usual encodings can
// always be written.
bool Section::CanKeepEncoding() const {
  const std::string& encoding = queueDocument_->Encoding();
  if (EqualIgnoringCase(encoding, "UTF-8") || EqualIgnoringCase(encoding, "UTF-16")) return true;
  try {
    return LoadsAgainFrom(queueDocument_->Serialize());
  } catch (const NumberedError&) {
    return false;
  }
}

void Section::Save() {
  if (isDeleted_) throw CannotSave(NameOnDisk(), "It is deleted.", Owner->Path());
  if (SectionType == pellorin::SectionType::Queue)
    SaveQueue();
  else
    SaveToIni();
  for (const auto& setting : settings_) setting->OriginalValue = setting->Value;
}

bool Section::IsFileEmpty() const {
  try {
    return Owner->File().IsEmpty();
  } catch (const FileError& error) {
    throw CannotSave(NameOnDisk(), error.Description(), error.Path());
  }
}

void Section::SaveToIni() {
  const std::string& path = Owner->Path();
  if (cutOffOnLoading_)
    throw CannotSave(Name, "The file holds more of this section than the 10,000 bytes that could be read.",
                     path);
  try {
    const auto ansiName = Utf8ToAnsi(Name);
    if (!ansiName) throw CannotBeWritten{"Its name holds a character outside code page 1252."};
    const std::vector<std::string> lines = AnsiLines(*this);
    if (isTwin_) throw CannotBeWritten{kTwinProblem};
    if (!isOriginal_) RequireRoomFor(*ansiName, Owner->File().Read());
    isOriginal_ = true;  // a write that fails at its very end has reached the disk
    Owner->File().ReplaceSection(*ansiName, lines);
  } catch (const CannotBeWritten& failure) {
    throw CannotSave(Name, failure.reason, path);
  } catch (const FileError& error) {
    throw CannotSave(Name, error.Description(), error.Path());
  }
}

std::string Section::FileName() const {
  return queueFileName_.empty() ? Owner->Queues().FileNameOf(Name) : queueFileName_;
}

std::string Section::FilePath() const {
  return SectionType == pellorin::SectionType::Queue ? Owner->Queues().PathOf(FileName()) : Owner->Path();
}

void Section::SaveQueue() {
  const bool isNew = queueFileName_.empty();
  const std::string fileName = FileName();
  const std::string path = Owner->Queues().PathOf(fileName);
  if (!queueDocument_ || !queueProblem_.empty())
    throw CannotSave(Name, "Its definition could not be read: " + queueProblem_, path);
  try {
    if (!QueueFolder::StaysInside(Name))
      throw CannotBeWritten{
          "Its file would not lie in the folder of the queues. Please delete this queue and add it under "
          "another name."};
    if (isNew && Owner->Files().Status(path).kind != FileKind::Missing)
      throw CannotBeWritten{"A file of this name exists already and was not loaded."};
    // The document holds the unchanged settings as they were read; it changes only when the file does.
    QueueDefinition document = queueDocument_->Copy();
    for (const auto& setting : settings_) {
      const std::string& name = setting->Name;
      if (setting->HasChanges())
        document.SetAttribute(name, setting->Value);
      else if (!document.QueueHas(name))
        document.SetAttribute(name, document.Attribute(name).value_or(setting->Value));
    }
    const std::string bytes = document.Serialize();
    if (!LoadsAgainFrom(bytes)) throw CannotBeWritten{UnwritableReason(document)};
    queueFileName_ = fileName;  // as in SaveToIni: a failed write may have reached the disk
    WriteFileAtomically(Owner->Files(), path, bytes, NewFileAccess::FolderUsual);
    queueDocument_ = std::move(document);
  } catch (const CannotBeWritten& failure) {
    throw CannotSave(Name, failure.reason, path);
  } catch (const NumberedError& error) {
    throw CannotSave(Name, error.Description(), path);
  }
}

void Section::DeleteSection() {
  const bool isQueue = SectionType == pellorin::SectionType::Queue;
  const std::string path = isQueue ? Owner->Queues().PathOf(queueFileName_) : Owner->Path();
  try {
    if (!isQueue)
      Owner->File().RemoveSection(Utf8ToAnsi(NameOnDisk()).value_or(""));
    else if (!queueFileName_.empty())  // a queue that was never saved has no file
      RemoveFileDurably(Owner->Files(), path);
  } catch (const FileError& error) {
    throw CannotSave(NameOnDisk(), error.Description(), path);
  }
}

}  // namespace pellorin
