#include "platform/FileError.h"

#include <cerrno>

#include "platform/Paths.h"

namespace pellorin {

int SystemErrorNumber(FileProblem problem) {
  switch (problem) {
    case FileProblem::Missing:
      return ENOENT;
    case FileProblem::IsFolder:
      return EISDIR;
    case FileProblem::IsNotFolder:
      return ENOTDIR;
    case FileProblem::IsNotOrdinaryFile:
      return EINVAL;
    case FileProblem::TooLarge:
      return EFBIG;
    case FileProblem::ReadOnly:
      return EACCES;
    case FileProblem::NotWritten:
      break;
  }
  return EIO;
}

FileError::FileError(int systemError, const std::string& description, const std::string& path)
    : NumberedError(systemError, ErrorSource("FileSystem"), description, FullPath(path)) {}

FileError::FileError(FileProblem problem, const std::string& description, const std::string& path)
    : FileError(SystemErrorNumber(problem), description, path) {}

bool FileError::IsOfMissingFile() const {
  return Number() == ENOENT || Number() == ENOTDIR;
}

}  // namespace pellorin
