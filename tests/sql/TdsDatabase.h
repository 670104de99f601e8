// What the test server stores: databases, each with the procedure sp_sendPLN or without. Knows the statements
// that this program and its tests send; all others are syntax errors.
//
// A transaction works on a copy of all databases, which the others get to see when it is committed.
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "tests/sql/TdsMessages.h"

namespace pellorin::tds {

struct Database {
  std::string name;
  std::string procedure = {};  // its text; empty without one
  bool isPublic = false;
};
using Databases = std::map<std::string, Database>;  // by their names in one letter case

// One connection's state; used by its thread only.
struct TdsSession {
  std::string database = "master";
  std::optional<Databases> inTransaction = {};  // what the open one sees and changes
};

// The answer to one request.
struct Outcome {
  std::optional<Rows> rows = {};
  std::optional<SqlError> error = {};
  std::optional<std::string> databaseBefore = {};  // where the current one was changed
};

class TdsDatabase {
 public:
  Outcome Execute(TdsSession& session, const std::string& batch);
  void Begin(TdsSession& session);
  std::optional<SqlError> End(TdsSession& session, bool keepsChanges);
  bool HasOpenTransaction() {
    const std::lock_guard lock(mutex_);
    return transactions_ > 0;
  }

 private:
  Outcome Run(TdsSession& session, const std::string& batch);

  std::mutex mutex_;  // guards all below
  Databases databases_{{"master", {"master"}}};
  int transactions_ = 0;  // open ones
};

}  // namespace pellorin::tds
