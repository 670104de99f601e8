// How to log in to an instance: as the user who runs the program, or with a SQL login.
#pragma once

#include <string>

namespace pellorin {

struct SqlLogin {
  std::string server;
  bool isTrusted = true;
  std::string user;  // like the password, for a SQL login only
  std::string password;

  std::string Description() const { return isTrusted ? "Trusted" : user; }
};

}  // namespace pellorin
