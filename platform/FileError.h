// The failure of a file operation: number = the system's error number, description = what could not be done
// and why, path = the file's full path.
#pragma once

#include <string>

#include "base/NumberedError.h"

namespace pellorin {

// Problems of a file or folder that this program finds itself.
enum class FileProblem { Missing, IsFolder, IsNotFolder, IsNotOrdinaryFile, TooLarge, ReadOnly, NotWritten };

// The number that the system gives for such a problem.
int SystemErrorNumber(FileProblem problem);

class FileError : public NumberedError {
 public:
  FileError(int systemError, const std::string& description, const std::string& path);
  FileError(FileProblem problem, const std::string& description, const std::string& path);

  // Whether the file, or a folder on the way to it, does not exist.
  bool IsOfMissingFile() const;
};

}  // namespace pellorin
