// One queue and its definition file. Reads the settings from the file or, for a new queue, from the template.
// Keeps the document as it was read and writes it back with the changed settings. A failure to write is a
// NumberedError 50111 that names queue and file.
#pragma once

#include <optional>
#include <string>

#include "config/queues/QueueDefinition.h"

namespace pellorin {

class QueueFolder;
class SettingList;
struct QueueEntry;

class QueueSection {
 public:
  // Adds the document's settings. A file that cannot be used leaves a Problem and no settings.
  // CollectionError when the document holds an attribute twice, with different values.
  void Load(const QueueFolder& folder, const QueueEntry& file, SettingList& settings);
  void LoadTemplate(const QueueFolder& folder, const std::string& queueName, SettingList& settings);

  void Save(const QueueFolder& folder, const std::string& queueName, const SettingList& settings);
  // Removes the file, if there is one.
  void Remove(const QueueFolder& folder, const std::string& queueName) const;

  // Whether a file or the template was loaded, usable or not.
  bool IsOriginal() const { return isOriginal_; }
  // The file on the disk that the queue came from or was saved to; empty for a new queue.
  const std::string& FileName() const { return fileName_; }
  // Full path of that file; for a new queue, of the file that a save will write.
  std::string Path(const QueueFolder& folder, const std::string& queueName) const;
  // Why the definition cannot be used, with the file's full path; empty when it can.
  const std::string& Problem() const { return problem_; }
  // False when the definition cannot be used, or what a save writes in its encoding would not load again.
  bool CanBeWritten() const { return problem_.empty() && !hasUnwritableEncoding_; }

 private:
  void Read(const QueueFolder& folder, const std::string& fileName, const std::string& queueName,
            SettingList& settings);
  void RequireWritable(const QueueFolder& folder, const std::string& queueName,
                       const std::string& fileName) const;
  bool CanKeepEncoding(const SettingList& settings) const;

  std::optional<QueueDefinition> document_;
  std::string fileName_;
  std::string problem_;
  bool isOriginal_ = false;
  bool hasUnwritableEncoding_ = false;
};

}  // namespace pellorin
