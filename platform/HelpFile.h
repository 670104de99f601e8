// A compiled HTML help file (".chm"): topics, pictures and a table of contents in one file. The system's own
// viewer shows such files on Windows; elsewhere the program reads them itself.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pellorin {

class HelpFile {
 public:
  virtual ~HelpFile() = default;

  // The bytes of one part, named as a link names it ("images/a.png") in any letter case. Nothing when there
  // is no such part or it cannot be read.
  virtual std::optional<std::string> Read(const std::string& name) const = 0;
  // The names of all topics, pictures and tables of contents.
  virtual std::vector<std::string> Names() const = 0;
};

// Null when the path is not a readable help file.
std::unique_ptr<HelpFile> OpenHelpFile(const std::string& path);

}  // namespace pellorin
