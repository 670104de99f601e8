// The program with which the desktop opens a text file.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace pellorin {

struct TextEditor {
  std::string program;                 // full path
  std::vector<std::string> arguments;  // UTF-8, not quoted
};

// Nothing when the system has no such program.
std::optional<TextEditor> TextEditorFor(const std::string& file);

}  // namespace pellorin
