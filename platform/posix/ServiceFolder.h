// The file that registers the service's folder.
#pragma once

#include <string>

#include "platform/FileOperations.h"

namespace pellorin {

// As RegisteredServiceFolder, with the first line of this file as the registration.
std::string ServiceFolderOf(FileOperations& files, const std::string& registrationFile);

}  // namespace pellorin
