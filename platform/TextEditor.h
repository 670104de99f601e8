// The desktop's program for text files.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace pellorin {

struct ProgramStart {
  std::string program;  // full path
  std::vector<std::string> arguments;
};

// What opens this file, given by its full path. Nothing where the desktop has no such program.
std::optional<ProgramStart> TextEditorFor(const std::string& path);

}  // namespace pellorin
