// The script that creates sp_sendPLN: one batch, in the file "sp_sendPLN_create.sql" of the program's folder.
#pragma once

#include <string>

#include "platform/FileOperations.h"

namespace pellorin {

inline constexpr const char* kInstallScript = "sp_sendPLN_create.sql";

// The whole text of a file in code page 1252. NumberedError when it cannot be read or is Unicode.
std::string ReadScriptFile(FileOperations& files, const std::string& programFolder,
                           const std::string& fileName);

// The first "CREATE PROCEDURE", in any letter case, becomes "ALTER PROCEDURE".
std::string AlteringScript(const std::string& script);

// Turns each block from "--sqlstart" to "--sqlend", in any letter case, into a comment. These blocks refuse
// temporary tables in queries.
std::string ScriptWithoutBlock(const std::string& script);

}  // namespace pellorin
