#include "files/AtomicFile.h"

#include <random>

#include "base/Text.h"
#include "files/OpenFile.h"
#include "platform/Paths.h"

namespace pellorin {
namespace {

// A hidden file beside the target, because a rename is atomic only within one folder. A long name is cut so
// that the whole still fits the file system's limit for names.
std::string TemporaryPathBeside(const std::string& target) {
  constexpr std::size_t kLongestPart = 200;
  std::random_device random;
  std::string name = ".";
  name += NameOf(target).substr(0, kLongestPart);
  name += '.';
  for (int byte = 0; byte < 8; ++byte) AppendHex(name, static_cast<unsigned char>(random() & 0xFF));
  name += ".tmp";
  return JoinPath(FolderOf(target), name);
}

// Deleted on destruction unless renamed over the target.
class TemporaryFile {
 public:
  TemporaryFile(FileOperations& files, const std::string& path, NewFileAccess access)
      : files_(files), path_(path), file_(files, files.CreateNew(path, access)) {}

  ~TemporaryFile() {
    if (renamed_) return;
    file_.CloseQuietly();
    try {
      files_.Remove(path_);
    } catch (const FileError&) {
      // The failure that led here is the one to report.
    }
  }

  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  void CopyAccess(const std::string& from) { files_.CopyAccess(file_.Handle(), from); }

  void Write(std::string_view bytes) {
    while (!bytes.empty()) {
      const std::size_t written = files_.Write(file_.Handle(), bytes);
      if (written == 0)
        throw FileError(FileProblem::NotWritten, "Cannot write the file: no byte was written", path_);
      bytes.remove_prefix(written);
    }
  }

  void Replace(const std::string& target) {
    files_.Synchronize(file_.Handle());
    file_.Close();
    files_.Rename(path_, target);
    renamed_ = true;
  }

 private:
  FileOperations& files_;
  std::string path_;
  OpenFile file_;
  bool renamed_ = false;
};

void RequireWritable(FileOperations& files, FileKind kind, const std::string& target) {
  if (kind == FileKind::Missing) return;
  if (kind == FileKind::Folder) {
    throw FileError(FileProblem::IsFolder, "Cannot write the file: it is a folder", target);
  }
  if (kind == FileKind::Other) {
    throw FileError(FileProblem::IsNotOrdinaryFile, "Cannot write the file: it is not an ordinary file",
                    target);
  }
  if (files.IsReadOnly(target)) throw FileError(FileProblem::ReadOnly, "The file is read-only", target);
}

// A rename or a removal survives a loss of power only after the folder has reached the disk.
void SynchronizeFolder(FileOperations& files, const std::string& folder) {
  OpenFile opened(files, files.OpenFolder(folder));
  files.Synchronize(opened.Handle());
  opened.Close();
}

void ReplaceFile(FileOperations& files, const std::string& target, std::string_view bytes,
                 NewFileAccess access) {
  const FileKind kind = files.Status(target).kind;
  RequireWritable(files, kind, target);
  const bool exists = kind == FileKind::File;
  {
    // The access is set before the first byte is written, so that only those who may read the old content can
    // ever read the new.
    TemporaryFile temporary(files, TemporaryPathBeside(target),
                            exists ? NewFileAccess::OwnerAndFolderGroup : access);
    if (exists) temporary.CopyAccess(target);
    temporary.Write(bytes);
    temporary.Replace(target);
  }
  SynchronizeFolder(files, FolderOf(target));
}

}  // namespace

void WriteFileAtomically(FileOperations& files, const std::string& path, std::string_view bytes,
                         NewFileAccess access) {
  const std::string target = files.ResolveLinks(path);
  try {
    ReplaceFile(files, target, bytes, access);
  } catch (const FileError& error) {
    // The administrator knows the file, not its temporary stand-in.
    throw FileError(error.Number(), error.Description(), target);
  }
}

void WriteNewFileAtomically(FileOperations& files, const std::string& temporary, const std::string& target,
                            std::string_view bytes, NewFileAccess access) {
  {
    TemporaryFile file(files, temporary, access);
    file.Write(bytes);
    file.Replace(target);
  }
  try {
    SynchronizeFolder(files, FolderOf(target));
  } catch (const FileError&) {
    // A reader may already have the file; do not undo or retry.
  }
}

void RemoveFileDurably(FileOperations& files, const std::string& path) {
  try {
    files.Remove(path);
  } catch (const FileError& error) {
    if (error.IsOfMissingFile()) return;
    throw;
  }
  SynchronizeFolder(files, FolderOf(path));
}

}  // namespace pellorin
