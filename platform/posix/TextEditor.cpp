#include "platform/TextEditor.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "base/Text.h"
#include "platform/Environment.h"
#include "platform/Paths.h"

namespace pellorin {
namespace {

bool IsProgram(const std::string& path) {
  std::error_code failure;
  return std::filesystem::is_regular_file(path, failure) && ::access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<TextEditor> TextEditorFor(const std::string& file) {
  for (const std::string& folder : SplitAt(":", EnvironmentOr("PATH", ""))) {
    const std::string program = FullPath(JoinPath(folder, "xdg-open"));
    if (IsProgram(program)) return TextEditor{program, {file}};
  }
  return std::nullopt;
}

}  // namespace pellorin
