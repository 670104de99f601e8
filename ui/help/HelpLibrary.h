// The open help files. The address of a topic is "help://f0/ConfigurationGuide.htm#QueuesTab": the host
// counts the files in the order in which they were opened, so that links between topics are relative
// addresses.
#pragma once

#include <QByteArray>
#include <QUrl>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/HelpFile.h"

namespace pellorin {

class HelpLibrary {
 public:
  // Opens the file when it is not open yet; false when it cannot be read.
  bool Open(const std::string& path);
  // Of a topic in an open file, with or without an anchor.
  QUrl Address(const std::string& path, const QString& topic) const;
  std::optional<QByteArray> Read(const QUrl& address) const;
  std::string PathOf(const QUrl& address) const;  // of the file that the address lies in

  struct Entry {
    QString title;
    QUrl address;
    int level = 0;  // 0 for a chapter
  };
  // The table of contents of the file that the address lies in; without one, its topics by name.
  std::vector<Entry> Contents(const QUrl& address) const;
  // Each topic of that file once, in the order of the contents.
  std::vector<QUrl> Topics(const QUrl& address) const;

  // Where a link leads: a link to another file, as such files write it, names a file in the same folder.
  // Empty when that file cannot be read.
  QUrl Follow(const QUrl& link, const QUrl& from);

 private:
  struct Volume {
    std::string path;
    std::unique_ptr<HelpFile> file;
  };
  const Volume* VolumeOf(const QUrl& address) const;

  std::vector<Volume> volumes_;
};

}  // namespace pellorin
