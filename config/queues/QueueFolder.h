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
  // All queue files but the template, ordered by queue name without regard to letter case. FileError when the
  // folder cannot be read.
  std::vector<QueueFile> Queues();
  // Why a queue file of that name cannot be used, as a sentence with the cure; empty when it can.
  static std::string NameProblem(const std::string& fileName);

  std::string PathOf(const std::string& fileName) const;
  // The template as it is spelled on the disk: exactly, else the only file that differs in letter case.
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
