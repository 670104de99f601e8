// The folder QUEUEDefinitions beside the program: one XML file per queue, and the template "defaultQUEUE.xml"
// that new queues start from and that is never written. File names are found without regard to letter case.
#pragma once

#include <string>
#include <vector>

#include "platform/FileOperations.h"

namespace pellorin {

class QueueFolder {
 public:
  struct QueueFile {
    std::string queueName;
    std::string fileName;  // as on the disk
  };

  QueueFolder(FileOperations& files, const std::string& programFolder);

  // Finds the folder in another spelling of its name when there is none of the usual one.
  void FindFolder();
  // All queue files, ordered by queue name without regard to letter case. FileError when the folder cannot be
  // read.
  std::vector<QueueFile> Queues();

  std::string PathOf(const std::string& fileName) const;
  std::string TemplatePath() const;
  // The file of the queue of this name as it is spelled on the disk; "<name>.xml" when there is none.
  std::string FileNameOf(const std::string& queueName) const;
  // Whether a file of that name would lie in the folder itself and not elsewhere.
  static bool StaysInside(const std::string& queueName);

 private:
  std::vector<FolderEntry> Entries();

  FileOperations& files_;
  std::string programFolder_;
  std::string folder_;
};

}  // namespace pellorin
