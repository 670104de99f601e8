#include "ui/help/HelpLibrary.h"

#include <QRegularExpression>
#include <QTextDocumentFragment>
#include <algorithm>

#include "platform/Paths.h"

namespace pellorin {
namespace {

bool IsTopic(const std::string& name) {
  static const QRegularExpression kPage(QStringLiteral("\\.html?$"),
                                        QRegularExpression::CaseInsensitiveOption);
  return kPage.match(QString::fromStdString(name)).hasMatch();
}

struct SitemapEntry {
  QString title, target;
  int level = 0;
};

// A sitemap is a list in a list: <ul><li><object><param name="Name" value="…"><param name="Local" value="…">.
std::vector<SitemapEntry> ReadSitemap(const QString& sitemap) {
  static const QRegularExpression kTag(QStringLiteral("<(/?)(ul|object|param)\\b((?:[^>\"]|\"[^\"]*\")*)>"),
                                       QRegularExpression::CaseInsensitiveOption);
  static const QRegularExpression kParameter(
      QStringLiteral("name\\s*=\\s*\"([^\"]*)\"\\s*value\\s*=\\s*\"([^\"]*)\""),
      QRegularExpression::CaseInsensitiveOption);
  std::vector<SitemapEntry> entries;
  SitemapEntry current;
  int depth = 0;
  for (auto tags = kTag.globalMatch(sitemap); tags.hasNext();) {
    const QRegularExpressionMatch tag = tags.next();
    const QString name = tag.captured(2).toLower();
    const bool isEnd = !tag.captured(1).isEmpty();
    if (name == QLatin1String("ul")) {
      depth += isEnd ? -1 : 1;
    } else if (name == QLatin1String("param")) {
      const QRegularExpressionMatch parameter = kParameter.match(tag.captured(3));
      const QString key = parameter.captured(1).toLower();
      const QString value = QTextDocumentFragment::fromHtml(parameter.captured(2)).toPlainText();
      if (key == QLatin1String("name")) current.title = value;
      if (key == QLatin1String("local")) current.target = value;
    } else if (!isEnd) {
      current = {{}, {}, std::max(depth - 1, 0)};
    } else if (!current.title.isEmpty() && depth > 0) {
      entries.push_back(current);
    }
  }
  return entries;
}

}  // namespace

bool HelpLibrary::Open(const std::string& path) {
  if (std::ranges::find(volumes_, path, &Volume::path) != volumes_.end()) return true;
  auto file = OpenHelpFile(path);
  if (file == nullptr) return false;
  volumes_.push_back({path, std::move(file)});
  return true;
}

QUrl HelpLibrary::Address(const std::string& path, const QString& topic) const {
  const auto volume = std::ranges::find(volumes_, path, &Volume::path);
  return QUrl(QStringLiteral("help://f%1/%2").arg(volume - volumes_.begin()).arg(topic));
}

const HelpLibrary::Volume* HelpLibrary::VolumeOf(const QUrl& address) const {
  bool isNumber = false;
  const std::size_t index = address.host().mid(1).toULong(&isNumber);
  return isNumber && index < volumes_.size() ? &volumes_[index] : nullptr;
}

std::optional<QByteArray> HelpLibrary::Read(const QUrl& address) const {
  const Volume* volume = VolumeOf(address);
  if (volume == nullptr) return std::nullopt;
  const auto bytes = volume->file->Read(address.path().mid(1).toStdString());
  if (!bytes) return std::nullopt;
  return QByteArray::fromStdString(*bytes);
}

std::string HelpLibrary::PathOf(const QUrl& address) const {
  const Volume* volume = VolumeOf(address);
  return volume == nullptr ? std::string() : volume->path;
}

std::vector<HelpLibrary::Entry> HelpLibrary::Contents(const QUrl& address) const {
  std::vector<Entry> contents;
  const Volume* volume = VolumeOf(address);
  if (volume == nullptr) return contents;
  const auto add = [&](const QString& title, const QString& target, int level) {
    contents.push_back({title, target.isEmpty() ? QUrl() : Address(volume->path, target), level});
  };
  const std::vector<std::string> names = volume->file->Names();
  for (const std::string& name : names)
    if (QString::fromStdString(name).endsWith(QLatin1String(".hhc"), Qt::CaseInsensitive))
      for (const SitemapEntry& entry :
           ReadSitemap(QString::fromStdString(volume->file->Read(name).value_or(std::string()))))
        add(entry.title, entry.target, entry.level);
  if (contents.empty())
    for (const std::string& name : names)
      if (IsTopic(name)) add(QString::fromStdString(name), QString::fromStdString(name), 0);
  return contents;
}

std::vector<QUrl> HelpLibrary::Topics(const QUrl& address) const {
  std::vector<QUrl> topics;
  for (const Entry& entry : Contents(address)) {
    const QUrl topic = entry.address.adjusted(QUrl::RemoveFragment);
    if (!topic.isEmpty() && std::ranges::find(topics, topic) == topics.end()) topics.push_back(topic);
  }
  return topics;
}

QUrl HelpLibrary::Follow(const QUrl& link, const QUrl& from) {
  static const QRegularExpression kOtherFile(QStringLiteral("^(?:ms-its|mk:@MSITStore):([^/\\\\]+)::/(.+)$"),
                                             QRegularExpression::CaseInsensitiveOption);
  const QRegularExpressionMatch match = kOtherFile.match(link.toString());
  if (!match.hasMatch()) return from.resolved(link);
  const std::string path = JoinPath(FolderOf(PathOf(from)), match.captured(1).toStdString());
  return Open(path) ? Address(path, match.captured(2)) : QUrl();
}

}  // namespace pellorin
