#include "sql/OpenConnection.h"

#include "sql/ConnectionString.h"

namespace pellorin {
namespace {

bool Open(SqlConnection& connection, UserMessages& messages) {
  try {
    connection.Open();
    return true;
  } catch (const SqlError& error) {
    messages.Show(
        {.text = "Could not open connection. Please make sure that the SQL server name is spelled "
                 "correctly and that the account you use to connect has sufficient permissions.\r\n" +
                 error.Description(),
         .title = "Connection Error",
         .icon = MessageIcon::Exclamation});
    return false;
  }
}

}  // namespace

bool OpenConnection(SqlConnection& connection, const SqlLogin& login, UserMessages& messages) {
  return login.isTrusted ? OpenTrustedConnection(connection, login.server, messages)
                         : OpenSqlConnection(connection, login.server, login.user, login.password, messages);
}

bool OpenSqlConnection(SqlConnection& connection, const std::string& server, const std::string& user,
                       const std::string& password, UserMessages& messages) {
  connection.ConnectionString = SqlLoginConnectionString(server, user, password);
  return Open(connection, messages);
}

bool OpenTrustedConnection(SqlConnection& connection, const std::string& server, UserMessages& messages) {
  connection.ConnectionString = TrustedConnectionString(server);
  return Open(connection, messages);
}

}  // namespace pellorin
