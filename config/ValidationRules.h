// The rules that the settings of a section must meet before they are saved or used by a test, one function
// per kind of section. A missing setting counts as empty.
//
//   SettingList settings;  // of an instance
//   settings.Add("PrimaryMailServer", "");
//   CheckSqlSettings(settings);  // {{"- Primary mail server must be provided", "PrimaryMailServer"}}
#pragma once

#include <string_view>
#include <vector>

#include "config/SettingList.h"
#include "platform/FileOperations.h"
#include "platform/SystemLocale.h"

namespace pellorin {

// A rule that is not met. Both texts are constants.
struct Violation {
  std::string_view message;      // "- " and a sentence for the administrator
  std::string_view settingName;  // the setting to correct
};

// Each returns its violations in the order in which the rules are checked.
std::vector<Violation> CheckMailSettings(const SettingList& settings, FileOperations& files,
                                         const LocaleConventions& locale);
std::vector<Violation> CheckSqlSettings(const SettingList& settings);
std::vector<Violation> CheckAdminSettings(const SettingList& settings);  // of a document with queues
std::vector<Violation> CheckQueueSettings(const SettingList& settings, const LocaleConventions& locale);

}  // namespace pellorin
