#include "config/queues/QueueSection.h"

#include <algorithm>
#include <utility>

#include "base/ErrorNumbers.h"
#include "base/NumberedError.h"
#include "base/TextCase.h"
#include "base/Utf8.h"
#include "config/CannotSave.h"
#include "config/PasswordScrambling.h"
#include "config/SettingList.h"
#include "config/queues/QueueFolder.h"

namespace pellorin {
namespace {

// Holds the reason alone: QueueSection::Save adds the queue's name and the path.
NumberedError Refusal(const std::string& reason) {
  return {kSectionNotSaved, ErrorSource("QueueSection"), reason};
}

// An attribute that the document holds twice is refused as a duplicate.
void AddSettings(const QueueDefinition& definition, SettingList& settings) {
  auto attributes = definition.Attributes();
  settings.Reserve(attributes.size());
  for (auto& [name, value] : attributes) {
    MakeClear(name, value);
    settings.AddLoaded(std::move(name), std::move(value));
  }
}

bool HoldSameValues(const SettingList& left, const SettingList& right) {
  return left.Count() == right.Count() && std::all_of(left.begin(), left.end(), [&](const auto& setting) {
           const Setting* other = right.GetSetting(setting->Name);
           return other != nullptr && other->Value == setting->Value;
         });
}

// Some encodings cannot be written back, and a password is never scrambled here. So the bytes that a save
// would write are read again before they replace the file.
bool LoadsAs(const std::string& bytes, const SettingList& settings) {
  SettingList again;
  try {
    const QueueDefinition definition(bytes);
    if (!definition.HasQueueElement()) return false;
    AddSettings(definition, again);
  } catch (const NumberedError&) {
    return false;
  }
  return HoldSameValues(settings, again);
}

// The document with the settings' present values. Unchanged ones stay as they were read; those that the
// element "queue" lacks are added to it.
QueueDefinition Edited(const QueueDefinition& document, const SettingList& settings) {
  QueueDefinition edited = document.Copy();
  for (const auto& setting : settings) {
    const std::string& name = setting->Name;
    if (setting->HasChanges())
      edited.SetAttribute(name, setting->Value);
    else if (!edited.QueueHas(name))
      edited.SetAttribute(name, edited.Attribute(name).value_or(setting->Value));
  }
  return edited;
}

}  // namespace

void QueueSection::Load(const QueueFolder& folder, const QueueEntry& file, SettingList& settings) {
  fileName_ = file.fileName;
  if (file.problem.empty()) return Read(folder, fileName_, file.queueName, settings);
  isOriginal_ = true;
  problem_ = Escaped(folder.PathOf(fileName_)) + "\r\n" + file.problem;
}

void QueueSection::LoadTemplate(const QueueFolder& folder, const std::string& queueName,
                                SettingList& settings) {
  Read(folder, folder.TemplateName(), queueName, settings);
}

void QueueSection::Read(const QueueFolder& folder, const std::string& fileName, const std::string& queueName,
                        SettingList& settings) {
  const std::string path = folder.PathOf(fileName);
  isOriginal_ = true;
  try {
    document_.emplace(folder.Read(fileName));
    if (!document_->HasQueueElement()) problem_ = path + "\r\n" + kNoQueueElement;
  } catch (const NumberedError& error) {
    problem_ = path + "\r\n" + error.Description();
    return;
  }
  try {
    AddSettings(*document_, settings);
    hasUnwritableEncoding_ = !CanKeepEncoding(settings);
  } catch (const CollectionError& error) {
    throw CollectionError(error.Number(), error.Source(),
                          "Queue " + queueName + " holds an attribute twice: " + error.Description(), path);
  } catch (const NumberedError& error) {
    throw NumberedError(error.Number(), error.Source(), "Queue " + queueName + ": " + error.Description(),
                        path);
  }
}

// Tried before anything changes, so that such a queue can be shown without changing it. The usual encodings
// can always be written.
bool QueueSection::CanKeepEncoding(const SettingList& settings) const {
  const std::string& encoding = document_->Encoding();
  if (EqualIgnoringCase(encoding, "UTF-8") || EqualIgnoringCase(encoding, "UTF-16")) return true;
  try {
    return LoadsAs(document_->Serialize(), settings);
  } catch (const NumberedError&) {
    return false;
  }
}

std::string QueueSection::Path(const QueueFolder& folder, const std::string& queueName) const {
  return folder.PathOf(fileName_.empty() ? folder.FileNameOf(queueName) : fileName_);
}

void QueueSection::Save(const QueueFolder& folder, const std::string& queueName,
                        const SettingList& settings) {
  const std::string fileName = fileName_.empty() ? folder.FileNameOf(queueName) : fileName_;
  try {
    RequireWritable(folder, queueName, fileName);
    QueueDefinition edited = Edited(*document_, settings);
    const std::string bytes = edited.Serialize();
    if (!LoadsAs(bytes, settings))
      throw Refusal("What would be written does not load as the same settings (encoding " +
                    edited.Encoding() + "). Please save the file in UTF-8 with a text editor.");
    fileName_ = fileName;  // a write that fails at its very end has reached the disk
    folder.Write(fileName, bytes);
    document_ = std::move(edited);
  } catch (const NumberedError& error) {
    throw CannotSave(queueName, error.Description(), folder.PathOf(fileName));
  }
}

void QueueSection::RequireWritable(const QueueFolder& folder, const std::string& queueName,
                                   const std::string& fileName) const {
  if (!document_ || !problem_.empty()) throw Refusal("Its definition could not be read: " + problem_);
  if (!QueueFolder::StaysInside(queueName))
    throw Refusal(
        "Its file would not lie in the folder of the queues. Please delete this queue and add it under "
        "another name.");
  if (fileName_.empty() && folder.Holds(fileName))
    throw Refusal("A file of this name exists already and was not loaded.");
}

void QueueSection::Remove(const QueueFolder& folder, const std::string& queueName) const {
  if (fileName_.empty()) return;  // never saved
  try {
    folder.Remove(fileName_);
  } catch (const FileError& error) {
    throw CannotSave(queueName, error.Description(), folder.PathOf(fileName_));
  }
}

}  // namespace pellorin
