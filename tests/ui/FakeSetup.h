// An installer that does as the test says and remembers what it was asked.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "sql/ProcedureInstaller.h"

namespace pellorin::test {

class FakeSetup : public ProcedureSetup {
 public:
  std::optional<std::vector<std::string>> ListDatabases(const SqlLogin& login) override {
    Note("list", login);
    return databases;
  }
  bool Install(const SqlLogin& login, const Installation& installation) override {
    Note("install", login);
    asked += " " + installation.database + (installation.grantsToAll ? " all" : "") +
             (installation.allowsTempTables ? " temp" : "");
    return succeeds;
  }
  std::string SecurityNote() const override { return note; }

  std::optional<std::vector<std::string>> databases = {{"accounts", "master", "sales"}};
  bool succeeds = true;
  std::string note;
  std::function<void()> onCall;
  int calls = 0;
  std::string asked;  // at the last call: "install HOST1 sa/pw sales all temp"

 private:
  void Note(const std::string& call, const SqlLogin& login) {
    ++calls;
    asked =
        call + " " + login.server + " " + (login.isTrusted ? "trusted" : login.user + "/" + login.password);
    if (onCall) onCall();
  }
};

}  // namespace pellorin::test
