#include "platform/SqlServers.h"

#include "platform/posix/FolderRegistry.h"

namespace pellorin {

// A server that this user may not even look at counts as not installed.
bool HasUnlistedSqlServer(FileOperations& files) {
  try {
    return !FolderRegistry::HasSystemRoot(files) &&
           files.Status("/opt/mssql/bin/sqlservr").kind == FileKind::File;
  } catch (const FileError&) {
    return false;
  }
}

}  // namespace pellorin
