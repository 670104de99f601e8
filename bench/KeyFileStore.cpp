#include "bench/KeyFileStore.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>

namespace pellorin {
namespace {

void Check(bool succeeded, const char* operation) {
  if (!succeeded) throw std::runtime_error(std::string("cannot ") + operation);
}

void Synchronize(int file) {
  Check(fsync(file) == 0 && close(file) == 0, "synchronise");
}

// The same steps to the disk as the store's: temporary file, fsync, rename, fsync of the folder.
void WriteDurably(const std::string& path, std::string_view bytes) {
  const std::string temporary = path + ".new";
  const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0640);
  Check(file >= 0, "create the temporary file");
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    Check(written > 0, "write the temporary file");
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  Synchronize(file);
  Check(std::rename(temporary.c_str(), path.c_str()) == 0, "rename the temporary file");
  const int folder = open(path.substr(0, path.rfind('/')).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  Check(folder >= 0, "open the folder");
  Synchronize(folder);
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
