// What the test server stores: databases, each with the procedure sp_sendPLN and the mail that it was asked
// to send. Understands only the statements that this system and its tests need; all others are syntax errors.
//
// A connection's first change inside a transaction takes a snapshot, which a rollback restores. Until the
// transaction ends no other connection sees the contents of databases, as if all of them were locked.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/sql/SqlTokens.h"
#include "tests/sql/TdsProtocol.h"

namespace pellorin::tds {

// One connection's state in the model; used by its thread only.
struct TdsSession {
  std::string database = "master";
  bool inTransaction = false;
};

struct ResultSet {
  ColumnType type = ColumnType::kName;
  std::string column;  // name
  std::vector<std::optional<std::string>> rows;
};

// The answer to one request.
struct Outcome {
  std::optional<ResultSet> result;
  std::optional<SqlError> error;
  bool databaseChanged = false;
  bool ranProcedure = false;
};

class TdsDatabase {
 public:
  TdsDatabase();

  std::optional<std::string> NameOf(const std::string& database) const;  // as created; nothing if missing

  // Nothing while another connection's open transaction is in the way. `values` are those of the parameters
  // that the batch names, by their names.
  using Values = std::map<std::string, std::optional<std::string>>;
  std::optional<Outcome> Execute(TdsSession& session, const std::string& batch, const Values& values = {});

  std::optional<SqlError> Begin(TdsSession& session);
  std::optional<SqlError> Commit(TdsSession& session);
  std::optional<SqlError> RollBack(TdsSession& session);  // also the end of a connection

 private:
  static constexpr std::size_t kParameterCount = 8;
  using Mail = std::array<std::optional<std::string>, kParameterCount>;
  struct Procedure {
    std::string text;
    bool isPublic = false;
  };
  struct Contents {
    std::string name;
    std::optional<Procedure> procedure;
    std::vector<Mail> mail;
  };
  using Databases = std::map<std::string, Contents>;  // by their names in one letter case
  struct Busy {};                                     // thrown: another connection's change is not ended

  Outcome Run(TdsSession& session, const std::string& batch, const Values& values);
  Outcome RunProcedure(TdsSession& session, const std::vector<SqlToken>& statement, const Values& values);
  Outcome SendMail(TdsSession& session, const std::vector<CallValue>& arguments);

  Outcome ListDatabases(TdsSession& session, const std::string& name);
  Outcome CurrentDatabase(TdsSession& session, const std::string& name);
  Outcome UseDatabase(TdsSession& session, const std::string& name);
  Outcome CreateDatabase(TdsSession& session, const std::string& name);
  Outcome DropDatabase(TdsSession& session, const std::string& name);
  Outcome CountProcedures(TdsSession& session, const std::string& name);
  Outcome Definition(TdsSession& session, const std::string& name);
  Outcome CountGrants(TdsSession& session, const std::string& name);
  Outcome Grant(TdsSession& session, const std::string& name);
  Outcome ListMail(TdsSession& session, const std::string& column);
  Outcome StoreProcedure(TdsSession& session, const std::string& batch, bool isNew);

  const Contents& Read(const TdsSession& session) const;  // of the current database
  Contents& Write(const TdsSession& session);
  void End(TdsSession& session, bool keepChanges);

  mutable std::mutex mutex_;  // guards all below
  Databases databases_;
  const TdsSession* writer_ = nullptr;  // whose transaction has changed something
  Databases snapshot_;                  // from before that change
};

}  // namespace pellorin::tds
