#include "config/Section.h"

#include <utility>

#include "platform/Guid.h"

namespace pellorin {

void Section::SetIsDeleted(bool deleted) {
  isDeleted_ = deleted;
  if (deleted) Name += "|" + GenerateGUID();
}

Setting& Section::Add(std::string settingName, std::string settingValue) {
  auto setting = std::make_unique<Setting>();
  setting->Value = std::move(settingValue);
  setting->Name = std::move(settingName);
  setting->Section = this;
  const std::string& key = setting->Name;
  return settings_.Add(key, std::move(setting));
}

std::string Section::GetValue(std::string_view settingName) const {
  const Setting* setting = GetSetting(settingName);
  return setting == nullptr ? std::string() : setting->Value;
}

void Section::SetValue(const std::string& settingName, const std::string& settingValue) {
  if (Setting* setting = GetSetting(settingName))
    setting->Value = settingValue;
  else
    Add(settingName, settingValue);
}

Setting* Section::GetSetting(std::string_view settingName) const {
  for (const auto& setting : settings_)
    if (setting->Name == settingName) return setting.get();
  return nullptr;
}

bool Section::HasChanges() const {
  if (isDeleted_) return true;
  for (const auto& setting : settings_)
    if (setting->HasChanges()) return true;
  return false;
}

void Section::RollBack() {
  for (const auto& setting : settings_) setting->Value = setting->OriginalValue;
}

std::string Section::DisplayName() const {
  static constexpr std::string_view kPrefixes[] = {"MAIL:", "SQL:", "ADMIN:"};
  if (SectionType == pellorin::SectionType::Queue) return Name;
  const std::string_view prefix = kPrefixes[static_cast<std::size_t>(SectionType)];
  const bool hasPrefix = EqualIgnoringCase(std::string_view(Name).substr(0, prefix.size()), prefix);
  return hasPrefix ? Name.substr(prefix.size()) : Name;
}

std::string Section::NameOnDisk() const {
  return Name.substr(0, Name.find('|'));
}

}  // namespace pellorin
