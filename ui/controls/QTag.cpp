#include "ui/controls/QTag.h"

#include <algorithm>

namespace pellorin {
namespace {

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (std::size_t end; (end = text.find(separator)) != std::string_view::npos; text.remove_prefix(end + 1))
    parts.push_back(text.substr(0, end));
  parts.push_back(text);
  return parts;
}

bool Contains(const std::vector<std::string>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

void QTag::Init(std::string_view tag) {
  const auto halves = Split(tag, '@');
  if (halves.size() != 2) return;
  for (const std::string_view section : Split(halves[1], ',')) sections_.emplace_back(section);
  const auto parts = Split(halves[0], ':');
  if (parts.size() > 2) return;
  InitMembers(parts[0], "on");
  if (parts.size() == 2) InitMembers(parts[1], "off");
}

void QTag::InitMembers(std::string_view items, std::string_view mode) {
  static constexpr std::string_view kMember = "Member";
  if (items.empty()) return;
  for (const std::string_view item : Split(items, ',')) {
    if (item.ends_with(kMember))
      memberGroups_.emplace_back(item.substr(0, item.size() - kMember.size()));
    else if (mode == "on")
      onGroups_.emplace_back(item);
    else if (mode == "off")
      offGroups_.emplace_back(item);
  }
}

bool QTag::IsInGroup(std::string_view name) const {
  return Contains(memberGroups_, name);
}
bool QTag::IsInSection(std::string_view name) const {
  return Contains(sections_, name);
}
bool QTag::IsOnGroup(std::string_view name) const {
  return Contains(onGroups_, name);
}
bool QTag::IsOffGroup(std::string_view name) const {
  return Contains(offGroups_, name);
}

}  // namespace pellorin
