// The script that creates sp_sendPLN, as the installer sends it to a server: one batch, which the service
// brings along as "sp_sendPLN_create.sql" in the program's folder.
#pragma once

#include <string>

#include "platform/FileOperations.h"

namespace pellorin {

inline constexpr const char* kInstallScript = "sp_sendPLN_create.sql";

// A text file of code page 1252, whole. NumberedError when it cannot be read or begins as Unicode does.
std::string ReadScriptFile(FileOperations& files, const std::string& programFolder,
                           const std::string& fileName);

// The first "CREATE PROCEDURE", in any letter case, becomes "ALTER PROCEDURE".
std::string AlteringScript(const std::string& script);

// Makes one comment of each block between the lines "--sqlstart" and "--sqlend", in any letter case: what
// they enclose refuses temporary tables in queries.
std::string ScriptWithoutBlock(const std::string& script);

}  // namespace pellorin
