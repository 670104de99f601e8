// Opening a connection for an operation of the user's. True when it is open; otherwise the box "Connection
// Error" has been shown with the server's sentence.
#pragma once

#include <string>

#include "base/UserMessages.h"
#include "sql/SqlConnection.h"

namespace pellorin {

bool OpenSqlConnection(SqlConnection& connection, const std::string& server, const std::string& user,
                       const std::string& password, UserMessages& messages);
bool OpenTrustedConnection(SqlConnection& connection, const std::string& server, UserMessages& messages);
// With the connection string that the connection has.
bool OpenConnection(SqlConnection& connection, UserMessages& messages);

}  // namespace pellorin
