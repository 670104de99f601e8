#include "sql/ConnectionString.h"

#include "base/Text.h"
#include "base/TextCase.h"
#include "sql/SqlConnection.h"

namespace pellorin {

std::string SqlLoginConnectionString(const std::string& server, const std::string& user,
                                     const std::string& password) {
  return "Provider=SQLOLEDB.1;Password=" + password + ";Persist Security Info=True;User ID=" + user +
         ";Data Source=" + server;
}

std::string TrustedConnectionString(const std::string& server) {
  return "Provider=SQLOLEDB.1;Integrated Security=SSPI;Persist Security Info=False;Initial Catalog=master;"
         "Data Source=" +
         server;
}

ConnectionSettings ReadConnectionString(const std::string& text) {
  ConnectionSettings settings;
  const auto take = [&](const std::string& key, const std::string& value) {
    if (EqualIgnoringCase(key, "Data Source")) settings.server = value;
    if (EqualIgnoringCase(key, "User ID")) settings.user = value;
    if (EqualIgnoringCase(key, "Password")) settings.password = value;
    if (EqualIgnoringCase(key, "Initial Catalog")) settings.database = value;
    if (EqualIgnoringCase(key, "Integrated Security")) settings.isTrusted = true;
  };
  for (const std::string& piece : SplitAt(";", text)) {
    const std::size_t separator = piece.find('=');
    if (separator == std::string::npos)
      throw SqlError(0, ErrorSource("ConnectionString"),
                     "A server name, user name or password that holds \";\" cannot be used to connect.");
    take(piece.substr(0, separator), piece.substr(separator + 1));
  }
  return settings;
}

}  // namespace pellorin
