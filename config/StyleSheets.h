// The style sheets of mails in HTML: the files *.css of the folder HTMLStylesheets beside the program.
#pragma once

#include <string>
#include <vector>

#include "platform/FileOperations.h"

namespace pellorin {

// Their file names, in the folder's order; empty where the folder is missing. FileError when it
// cannot be read.
std::vector<std::string> StyleSheetNames(FileOperations& files, const std::string& programFolder);

}  // namespace pellorin
