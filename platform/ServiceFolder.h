// Where the service is installed, as far as this system knows.
#pragma once

#include <string>

#include "platform/FileOperations.h"

namespace pellorin {

// The environment variable PELLORIN_SERVICE_FOLDER, else what the system has registered; empty when nothing
// is known. FileError when the registration cannot be read.
std::string RegisteredServiceFolder(FileOperations& files);

}  // namespace pellorin
