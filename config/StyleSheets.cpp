#include "config/StyleSheets.h"

#include "base/TextCase.h"
#include "files/FileLookup.h"
#include "platform/Paths.h"

namespace pellorin {

std::vector<std::string> StyleSheetNames(FileOperations& files, const std::string& programFolder) {
  const std::string folder =
      JoinPath(programFolder, FindIgnoringCase(files, programFolder, "HTMLStylesheets"));
  std::vector<std::string> names;
  if (files.Status(folder).kind != FileKind::Folder) return names;
  for (const FolderEntry& entry : files.List(folder))
    if (!entry.isFolder && EndsWithIgnoringCase(entry.name, ".css")) names.push_back(entry.name);
  return names;
}

}  // namespace pellorin
