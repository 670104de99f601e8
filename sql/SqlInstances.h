// The SQL Server instances that are installed on this machine, as the registry lists them.
#pragma once

#include <string>
#include <vector>

#include "platform/Registry.h"

namespace pellorin {

// Where there is no registry, an installed SQL Server counts as the default instance.
bool IsDefaultInstanceAssumed(const Registry& registry, FileOperations& files);

// The instances as connections name them: MACHINE for the default instance ("MSSQLSERVER", in exactly this
// spelling), else MACHINE\NAME. Empty parts of the list stay. False when there is no list, or it cannot be
// read. A missing list counts as holding the default instance when that is assumed.
bool GetInstalledSqlInstances(const Registry& registry, bool isDefaultAssumed, const std::string& machineName,
                              std::vector<std::string>& instances);

}  // namespace pellorin
