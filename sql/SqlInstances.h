// The SQL Server instances that are installed on this machine, as the registry lists them.
#pragma once

#include <string>
#include <vector>

#include "platform/Registry.h"

namespace pellorin {

// Where nobody has laid out a registry, a SQL Server for Linux that is installed is the default instance.
bool IsDefaultInstanceAssumed(FileOperations& files);

// The instances as connections name them: MACHINE for the default instance ("MSSQLSERVER", exactly so
// spelled), else MACHINE\NAME. Empty parts of the list stay. False when there is no list, or none that can be
// read. A list that is missing counts as holding the default instance when that is assumed.
bool GetInstalledSqlInstances(const Registry& registry, bool isDefaultAssumed, const std::string& machineName,
                              std::vector<std::string>& instances);

}  // namespace pellorin
