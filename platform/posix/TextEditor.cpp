#include "platform/TextEditor.h"

#include <unistd.h>

#include "base/Text.h"
#include "platform/Environment.h"
#include "platform/Paths.h"

namespace pellorin {

std::optional<ProgramStart> TextEditorFor(const std::string& path) {
  for (const std::string& folder : SplitAt(":", EnvironmentOr("PATH", "/usr/bin:/bin"))) {
    const std::string program = JoinPath(folder, "xdg-open");
    if (IsFullPath(program) && ::access(program.c_str(), X_OK) == 0) return ProgramStart{program, {path}};
  }
  return std::nullopt;
}

}  // namespace pellorin
