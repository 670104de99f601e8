#include "ui/sql/InstanceNotices.h"

#include "base/Utf16.h"
#include "config/SettingKeys.h"

namespace pellorin {
namespace {

constexpr std::size_t kLongestName = 60;  // in a sentence

std::string ConnectionTypeNotice(const Section& instance) {
  const std::string stored = instance.GetValue(SqlKey::kConnectionType);
  const Setting* inAnyCase = instance.Settings().Find(SqlKey::kConnectionType);
  if (inAnyCase != nullptr && inAnyCase->Name != SqlKey::kConnectionType)
    return "The connection type is stored as \"" + inAnyCase->Name +
           "\". Please correct the spelling of this key in the file.";
  if (stored.empty()) return "No connection type is stored. Please choose one.";
  if (stored != "Trusted" && stored != "Sql")
    return "The stored connection type is neither Trusted nor Sql. Please choose one.";
  return {};
}

std::string RedirectionNotice(const Section& instance) {
  const std::string address = instance.GetValue(SqlKey::kRedirectAllEmailTo);
  if (address.empty()) return {};
  return "All mail of this instance goes to " + Shortened(address, kLongestName) +
         " instead of its recipients (Redirect All Email To).";
}

void Append(std::string& lines, const std::string& sentence) {
  if (!sentence.empty()) lines += (lines.empty() ? "" : "\r\n") + sentence;
}

}  // namespace

void InstanceNotices::NoteLost(const Section& instance, const std::string& key, const std::string& content,
                               const std::string& name) {
  lost_[instance.Key][key] = "The " + content + " \"" + Shortened(name, kLongestName) +
                             "\" is not in its list, and is not set any more.";
}

void InstanceNotices::ForgetLost(const Section& instance, const std::string& key) {
  lost_[instance.Key].erase(key);
}

std::string InstanceNotices::Text(const Section& instance) const {
  std::string text = ConnectionTypeNotice(instance);
  Append(text, RedirectionNotice(instance));
  const auto lost = lost_.find(instance.Key);
  if (lost == lost_.end()) return text;
  for (const auto& [key, sentence] : lost->second) Append(text, sentence);
  return text;
}

}  // namespace pellorin
