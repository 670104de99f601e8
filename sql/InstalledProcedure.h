// Whether the sp_sendPLN of a database is the one of the script beside the program.
#pragma once

#include <string>

#include "platform/FileOperations.h"
#include "sql/SqlConnection.h"

namespace pellorin {

// Compares the two in the connection's current database. A sentence for the user, empty when the server does
// not give the definition or the script cannot be read: nothing is known then. Never throws.
std::string InstalledProcedureNote(SqlConnection& connection, FileOperations& files,
                                   const std::string& programFolder);

}  // namespace pellorin
