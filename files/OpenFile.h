// An open file or folder that is closed at the latest when its owner is left. Close() reports a failure, the
// destructor, which runs when something else has failed already, does not.
#pragma once

#include "platform/FileOperations.h"

namespace pellorin {

class OpenFile {
 public:
  OpenFile(FileOperations& files, FileHandle handle) : files_(files), handle_(handle) {}
  ~OpenFile() { CloseQuietly(); }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  FileHandle Handle() const { return handle_; }

  void Close() {
    open_ = false;
    files_.Close(handle_);
  }

  void CloseQuietly() {
    if (!open_) return;
    try {
      Close();
    } catch (const FileError&) {
      // The failure that led here is the one to report.
    }
  }

 private:
  FileOperations& files_;
  FileHandle handle_;
  bool open_ = true;
};

}  // namespace pellorin
