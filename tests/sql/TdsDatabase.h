// What the test server stores: databases, each with the procedure sp_sendPLN and the mail that it was asked
// to send. Understands only the statements that this system and its tests need; all others are syntax errors.
//
// A transaction works on a copy of all databases, which the others get to see when it is committed.
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "tests/sql/TdsProtocol.h"

namespace pellorin::tds {

using Mail = std::map<std::string, std::string>;  // values by the names of parameters

struct Database {
  std::string name;
  std::optional<std::string> procedure;  // its text
  bool isPublic = false;
  std::vector<Mail> mail;
};
using Databases = std::map<std::string, Database>;  // by their names in one letter case

// One connection's state in the model; used by its thread only.
struct TdsSession {
  std::string database = "master";
  std::optional<Databases> inTransaction;  // what the open one sees and changes
};

// The answer to one request.
struct Outcome {
  std::optional<ResultSet> result = {};
  std::optional<SqlError> error = {};
  std::optional<std::string> databaseBefore = {};  // where the current one was changed
  bool ranProcedure = false;
};

class TdsDatabase {
 public:
  // `values` are those of the parameters that the batch names.
  Outcome Execute(TdsSession& session, const std::string& batch, const std::vector<CallValue>& values = {});

  void Begin(TdsSession& session);
  std::optional<SqlError> End(TdsSession& session, bool keepsChanges);
  bool HasOpenTransaction() {
    const std::lock_guard lock(mutex_);
    return transactions_ > 0;
  }

 private:
  Outcome Run(TdsSession& session, const std::string& batch, const std::vector<CallValue>& values);

  std::mutex mutex_;  // guards all below
  Databases databases_{{"master", {"master", {}, false, {}}}};
  int transactions_ = 0;  // open ones
};

}  // namespace pellorin::tds
