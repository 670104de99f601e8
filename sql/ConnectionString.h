// The two connection strings of the program, and their reader. Values stand in them as they are, nothing is
// quoted or escaped: a ";" in a value ends it and so breaks the string; every other character is kept.
#pragma once

#include <string>

namespace pellorin {

std::string SqlLoginConnectionString(const std::string& server, const std::string& user,
                                     const std::string& password);
// Of the user who runs the program; begins in the database "master".
std::string TrustedConnectionString(const std::string& server);

struct ConnectionSettings {
  std::string server;
  std::string user;
  std::string password;
  std::string database;  // empty: the login's own
  bool isTrusted = false;
};

// Of a key that is there twice the last counts. SqlError, without any part of the string, when a piece has no
// "=".
ConnectionSettings ReadConnectionString(const std::string& text);

}  // namespace pellorin
