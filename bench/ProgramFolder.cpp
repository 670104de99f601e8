#include "bench/ProgramFolder.h"

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace pellorin {
namespace {

void Write(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

}  // namespace

ProgramFolder::ProgramFolder(const std::string& iniText, int queues,
                             const std::function<std::string(int number)>& queueFile) {
  std::string pattern = std::filesystem::current_path() / "bench-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make a folder");
  path_ = pattern;
  std::filesystem::create_directory(path_ + "/QUEUEDefinitions");
  std::filesystem::create_directory(path_ + "/HTMLStylesheets");
  std::ofstream(path_ + "/HTMLStylesheets/default.css");  // which the instances use
  Write(IniPath(), iniText);
  for (int number = 1; number <= queues; ++number) {
    queuePaths_.push_back(path_ + "/QUEUEDefinitions/Queue" + std::to_string(number) + ".xml");
    Write(queuePaths_.back(), queueFile(number));
  }
}

ProgramFolder::~ProgramFolder() {
  std::filesystem::remove_all(path_);
}

}  // namespace pellorin
