// The settings of one section, in the order in which they were loaded or added. GetValue, SetValue and
// GetSetting compare names exactly; Add, Item and Remove ignore letter case, as keys of a collection do:
//
//   SettingList settings;
//   settings.Add("timeout", "30");
//   settings.GetValue("Timeout");       // ""
//   settings.SetValue("Timeout", "5");  // CollectionError: "timeout" exists
//
// Knows which settings changed since they were last loaded or saved.
#pragma once

#include <string>
#include <string_view>

#include "config/KeyedCollection.h"
#include "config/Setting.h"

namespace pellorin {

class SettingList : public KeyedCollection<Setting> {
 public:
  explicit SettingList(Section* owner = nullptr) : owner_(owner) {}

  // CollectionError when a setting of that name exists in any letter case.
  Setting& Add(std::string name, std::string value);
  // Adds a setting that counts as unchanged.
  void AddLoaded(std::string name, std::string value);

  std::string GetValue(std::string_view name) const;  // empty when missing
  // Changes the setting, or adds it when there is none of that name.
  void SetValue(const std::string& name, const std::string& value);
  Setting* GetSetting(std::string_view name) const;  // null when missing

  bool HasChanges() const;
  void RollBack();     // every value becomes the one loaded; settings added since become empty
  void MarkAsSaved();  // every value counts as unchanged from now on

 private:
  Section* owner_;
};

}  // namespace pellorin
