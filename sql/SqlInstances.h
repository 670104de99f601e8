// The SQL Server instances that are installed on this machine, as the registry lists them.
#pragma once

#include <string>
#include <vector>

#include "platform/Registry.h"

namespace pellorin {

// The instances as connections name them: MACHINE for the default instance ("MSSQLSERVER", spelled exactly
// so), MACHINE\NAME for any other. Empty parts of the list stay. False when there is no list or it cannot be
// read. With `isDefaultAssumed`, a missing list counts as a list of the default instance.
bool GetInstalledSqlInstances(const Registry& registry, bool isDefaultAssumed, const std::string& machineName,
                              std::vector<std::string>& instances);

}  // namespace pellorin
