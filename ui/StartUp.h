// Checks and preparations before the window shows.
#pragma once

#include <string>

#include "config/Ini.h"
#include "ui/Components.h"

namespace pellorin {

// Whether the program lies in the folder of the service. A box says so when it does not.
bool IsInServiceFolder(const Components& components);

// The elements of the command line are separated by ","; one that contains "InstallMode", in any letter
// case, sets install mode.
bool IsInstallMode(const std::string& commandLine);

// Registers the service's sources of events with the event viewer. A failure is one line on standard error:
// the configuration can be edited all the same.
void RegisterEventSources(const Components& components);

// Says that the configuration can be read but not changed, and why; usually empty.
std::string WriteProtectionNotice(FileOperations& files, const std::string& iniPath);

// A message that names the sections of the file that could not be read; usually empty.
std::string UnreadNamesMessage(const Ini& document);

}  // namespace pellorin
