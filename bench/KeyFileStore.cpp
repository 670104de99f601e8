#include "bench/KeyFileStore.h"

#include <stdexcept>

#include "platform/FileOperations.h"
#include "platform/Paths.h"

namespace pellorin {
namespace {

void Check(bool succeeded, const char* operation) {
  if (!succeeded) throw std::runtime_error(std::string("cannot ") + operation);
}

void SynchronizeAndClose(FileHandle file) {
  SystemFiles().Synchronize(file);
  SystemFiles().Close(file);
}

// The same steps to the disk as the store's: temporary file, fsync, rename, fsync of the folder.
void WriteDurably(const std::string& path, std::string_view bytes) {
  FileOperations& files = SystemFiles();
  const std::string temporary = path + ".new";
  const FileHandle file = files.CreateNew(temporary, NewFileAccess::FolderUsual);
  while (!bytes.empty()) {
    const std::size_t written = files.Write(file, bytes);
    Check(written > 0, "write the temporary file");
    bytes.remove_prefix(written);
  }
  SynchronizeAndClose(file);
  files.Rename(temporary, path);
  SynchronizeAndClose(files.OpenFolder(FolderOf(path)));
}

}  // namespace

KeyFile LoadKeyFile(const std::string& path, GKeyFileFlags flags) {
  KeyFile file(g_key_file_new());
  Check(g_key_file_load_from_file(file.get(), path.c_str(), flags, nullptr) != FALSE, "load the key file");
  return file;
}

void SaveValueWithKeyFile(const std::string& path, const std::string& section, const char* key,
                          const char* value) {
  const KeyFile file = LoadKeyFile(path, G_KEY_FILE_KEEP_COMMENTS);
  g_key_file_set_string(file.get(), section.c_str(), key, value);
  gsize length = 0;
  gchar* text = g_key_file_to_data(file.get(), &length, nullptr);
  WriteDurably(path, {text, length});
  g_free(text);
}

}  // namespace pellorin
