// The folder QUEUEDefinitions beside the program: one XML file per queue, and the template "defaultQUEUE.xml"
// that new queues start from and that is never written. A file is named without its folder. Names are found
// without regard to letter case, the exact spelling first. Failures are FileErrors.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/FileOperations.h"

namespace pellorin {

struct QueueEntry {
  std::string queueName;  // as it is shown
  std::string fileName;   // as on the disk
  std::string problem;    // why a file of that name cannot be used, with the cure; empty when it can
};

class QueueFolder {
 public:
  QueueFolder(FileOperations& files, const std::string& programFolder);

  // Finds the folder under another spelling of its name if the usual one is missing.
  void FindFolder();
  // All queue files but the template, ordered by queue name without regard to letter case.
  std::vector<QueueEntry> Queues();

  std::string PathOf(const std::string& fileName) const;
  std::string TemplateName() const;
  // The file of the queue of this name as it is spelled on the disk; "<name>.xml" when there is none.
  std::string FileNameOf(const std::string& queueName) const;
  // Whether a file of that name would lie in the folder itself and not elsewhere.
  static bool StaysInside(const std::string& queueName);

  bool Holds(const std::string& fileName) const;
  std::string Read(const std::string& fileName) const;
  void Write(const std::string& fileName, std::string_view bytes) const;
  void Remove(const std::string& fileName) const;

 private:
  std::vector<FolderEntry> Entries();

  FileOperations& files_;
  std::string programFolder_;
  std::string folder_;
};

}  // namespace pellorin
