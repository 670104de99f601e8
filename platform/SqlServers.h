// The SQL Servers that are installed on this machine.
#pragma once

#include "platform/FileOperations.h"

namespace pellorin {

// Whether one is installed although the machine has no registry to list it. It is the default instance.
bool HasUnlistedSqlServer(FileOperations& files);

}  // namespace pellorin
