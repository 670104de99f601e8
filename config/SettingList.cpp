#include "config/SettingList.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace pellorin {

Setting& SettingList::Add(std::string name, std::string value) {
  auto setting = std::make_unique<Setting>();
  setting->Value = std::move(value);
  setting->Name = std::move(name);
  setting->Section = owner_;
  const std::string& key = setting->Name;
  return KeyedCollection::Add(key, std::move(setting));
}

void SettingList::AddLoaded(std::string name, std::string value) {
  Setting& setting = Add(std::move(name), std::move(value));
  setting.OriginalValue = setting.Value;
}

std::string SettingList::GetValue(std::string_view name) const {
  const Setting* setting = GetSetting(name);
  return setting == nullptr ? std::string() : setting->Value;
}

void SettingList::SetValue(const std::string& name, const std::string& value) {
  if (Setting* setting = GetSetting(name))
    setting->Value = value;
  else
    Add(name, value);
}

Setting* SettingList::GetSetting(std::string_view name) const {
  for (const auto& setting : *this)
    if (setting->Name == name) return setting.get();
  return nullptr;
}

bool SettingList::HasChanges() const {
  return std::any_of(begin(), end(), [](const auto& setting) { return setting->HasChanges(); });
}

void SettingList::RollBack() {
  for (const auto& setting : *this) setting->Value = setting->OriginalValue;
}

void SettingList::MarkAsSaved() {
  for (const auto& setting : *this) setting->OriginalValue = setting->Value;
}

}  // namespace pellorin
