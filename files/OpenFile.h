// An open file or folder, closed by the destructor at the latest. Close() reports a failure. The destructor
// reports none: it closes the file only after another failure.
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
