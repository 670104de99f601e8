// Opens a connection that the user asked for. True when it is open. Otherwise the box "Connection Error" has
// been shown, with the server's sentence.
#pragma once

#include <string>

#include "base/UserMessages.h"
#include "sql/SqlConnection.h"
#include "sql/SqlLogin.h"

namespace pellorin {

bool OpenConnection(SqlConnection& connection, const SqlLogin& login, UserMessages& messages);
bool OpenSqlConnection(SqlConnection& connection, const std::string& server, const std::string& user,
                       const std::string& password, UserMessages& messages);
bool OpenTrustedConnection(SqlConnection& connection, const std::string& server, UserMessages& messages);

}  // namespace pellorin
