// The two connection strings of the program, and their reader. Nothing in them is quoted or escaped: a ";" in
// a value ends it and so breaks the string. Every other character is kept.
#pragma once

#include <string>

namespace pellorin {

std::string SqlLoginConnectionString(const std::string& server, const std::string& user,
                                     const std::string& password);
// Logs in the user who runs the program, into the database "master".
std::string TrustedConnectionString(const std::string& server);

struct ConnectionSettings {
  std::string server;
  std::string user;
  std::string password;
  std::string database;  // empty: the login's own
  bool isTrusted = false;
};

// If a key occurs twice, the last counts. SqlError when a piece has no "="; the error holds no part of the
// string, because that may be a password.
ConnectionSettings ReadConnectionString(const std::string& text);

}  // namespace pellorin
