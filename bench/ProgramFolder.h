// A program folder below the current one, with this Pellorin.ini and this many queues; removed at the end.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bench/SampleConfiguration.h"

namespace pellorin {

class ProgramFolder {
 public:
  // The queues are named Queue1, Queue2 ...
  ProgramFolder(const std::string& iniText, int queues,
                const std::function<std::string(int number)>& queueFile = QueueFile);
  ~ProgramFolder();
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  const std::string& Path() const { return path_; }
  std::string IniPath() const { return path_ + "/Pellorin.ini"; }
  const std::vector<std::string>& QueuePaths() const { return queuePaths_; }

 private:
  std::string path_;
  std::vector<std::string> queuePaths_;
};

}  // namespace pellorin
