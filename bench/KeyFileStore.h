// GLib's GKeyFile on the store's files. The store's times are measured against it.
#pragma once

#include <glib.h>

#include <memory>
#include <string>
#include <string_view>

namespace pellorin {

struct KeyFileDeleter {
  void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, KeyFileDeleter>;

// std::runtime_error when the file cannot be read.
KeyFile LoadKeyFile(const std::string& path, GKeyFileFlags flags);

// Reads the file as it is at that moment, comments included, changes one value and replaces the file durably.
void SaveValueWithKeyFile(const std::string& path, const std::string& section, const char* key,
                          const char* value);

}  // namespace pellorin
