#include "tests/sql/TdsDatabase.h"

#include <algorithm>
#include <utility>

#include "platform/TextCase.h"

namespace pellorin::tds {
namespace {

const char* const kSystemDatabases[] = {"master", "model", "msdb", "tempdb"};

Outcome Count(bool found) {
  return {ResultSet{ColumnType::kCount, "", {found ? "1" : "0"}}, {}};
}

SqlError MissingDatabase(const std::string& name) {
  return {911, "Database '" + name + "' does not exist. Make sure that the name is entered correctly."};
}

void RefuseTransaction(const TdsSession& session, const char* statement) {
  if (!session.inTransaction) return;
  throw SqlError{226, std::string(statement) + " statement not allowed within multi-statement transaction."};
}

}  // namespace

TdsDatabase::TdsDatabase() {
  for (const char* name : kSystemDatabases) databases_[FoldCase(name)].name = name;
}

std::optional<std::string> TdsDatabase::NameOf(const std::string& database) const {
  const std::lock_guard lock(mutex_);
  const auto found = databases_.find(FoldCase(database));
  if (found == databases_.end()) return {};
  return found->second.name;
}

std::optional<Outcome> TdsDatabase::Execute(TdsSession& session, const std::string& batch,
                                            const Values& values) {
  const std::lock_guard lock(mutex_);
  try {
    return Run(session, batch, values);
  } catch (const SqlError& error) {
    Outcome failed;
    failed.error = error;
    return failed;
  } catch (const Busy&) {
    return {};
  }
}

Outcome TdsDatabase::Run(TdsSession& session, const std::string& batch, const Values& values) {
  static constexpr std::pair<const char*, Outcome (TdsDatabase::*)(TdsSession&, const std::string&)>
      kStatements[] = {
          {"select name from sysdatabases order by name", &TdsDatabase::ListDatabases},
          {"select db_name()", &TdsDatabase::CurrentDatabase},
          {"use _", &TdsDatabase::UseDatabase},
          {"create database _", &TdsDatabase::CreateDatabase},
          {"drop database _", &TdsDatabase::DropDatabase},
          {"select count(*) from sysobjects where xtype='P' and name='sp_sendPLN'",
           &TdsDatabase::CountProcedures},
          {"select definition from sys.sql_modules where object_id = object_id('sp_sendPLN')",
           &TdsDatabase::Definition},
          {"select count(*) from sys.database_permissions where major_id = object_id('sp_sendPLN') "
           "and grantee_principal_id = 0",
           &TdsDatabase::CountGrants},
          {"grant execute on sp_sendPLN to public", &TdsDatabase::Grant},
          {"select _ from PellorinStandInMail order by id", &TdsDatabase::ListMail},
      };
  const std::vector<SqlToken> statement = SqlTokens(batch);
  if (statement.empty()) return {};
  for (const auto& [pattern, run] : kStatements)
    if (const auto name = MatchStatement(statement, pattern)) return (this->*run)(session, *name);
  const std::vector<SqlToken> start(statement.begin(),
                                    statement.begin() + std::min<std::ptrdiff_t>(3, std::ssize(statement)));
  if (MatchStatement(start, "create procedure sp_sendPLN")) return StoreProcedure(session, batch, true);
  if (MatchStatement(start, "alter procedure sp_sendPLN")) return StoreProcedure(session, batch, false);
  if (start[0].Is("exec") || start[0].Is("execute")) return RunProcedure(session, statement, values);
  throw SyntaxError(statement.front().text);
}

Outcome TdsDatabase::ListDatabases(TdsSession&, const std::string&) {
  ResultSet names{ColumnType::kName, "name", {}};
  for (const auto& [folded, contents] : databases_) names.rows.emplace_back(contents.name);
  return {std::move(names), {}};
}

Outcome TdsDatabase::CurrentDatabase(TdsSession& session, const std::string&) {
  return {ResultSet{ColumnType::kName, "", {session.database}}, {}};
}

Outcome TdsDatabase::UseDatabase(TdsSession& session, const std::string& name) {
  const auto found = databases_.find(FoldCase(name));
  if (found == databases_.end()) throw MissingDatabase(name);
  session.database = found->second.name;
  Outcome outcome;
  outcome.databaseChanged = true;
  return outcome;
}

Outcome TdsDatabase::CreateDatabase(TdsSession& session, const std::string& name) {
  RefuseTransaction(session, "CREATE DATABASE");
  if (Utf16FromUtf8(name).size() > 2 * 128) {
    throw SqlError{103, "The identifier that starts with '" + name + "' is too long. Maximum length is 128.",
                   15};
  }
  if (databases_.contains(FoldCase(name)))
    throw SqlError{1801, "Database '" + name + "' already exists. Choose a different database name."};
  if (writer_ != nullptr) throw Busy{};
  databases_[FoldCase(name)].name = name;
  return {};
}

Outcome TdsDatabase::DropDatabase(TdsSession& session, const std::string& name) {
  RefuseTransaction(session, "DROP DATABASE");
  const auto isName = [&name](const std::string& other) { return EqualIgnoringCase(name, other); };
  if (std::any_of(std::begin(kSystemDatabases), std::end(kSystemDatabases), isName))
    throw SqlError{3708, "Cannot drop the database '" + name + "' because it is a system database."};
  if (isName(session.database))
    throw SqlError{3702, "Cannot drop database \"" + name + "\" because it is currently in use."};
  if (writer_ != nullptr) throw Busy{};
  if (databases_.erase(FoldCase(name)) == 0) {
    throw SqlError{
        3701,
        "Cannot drop the database '" + name + "', because it does not exist or you do not have permission.",
        11};
  }
  return {};
}

Outcome TdsDatabase::CountProcedures(TdsSession& session, const std::string&) {
  return Count(Read(session).procedure.has_value());
}

Outcome TdsDatabase::Definition(TdsSession& session, const std::string&) {
  ResultSet definition{ColumnType::kLongText, "definition", {}};
  if (const auto& procedure = Read(session).procedure) definition.rows.emplace_back(procedure->text);
  return {std::move(definition), {}};
}

Outcome TdsDatabase::CountGrants(TdsSession& session, const std::string&) {
  const auto& procedure = Read(session).procedure;
  return Count(procedure && procedure->isPublic);
}

Outcome TdsDatabase::Grant(TdsSession& session, const std::string&) {
  if (!Read(session).procedure) {
    throw SqlError{15151,
                   "Cannot find the object 'sp_sendPLN', because it does not exist or you do not have "
                   "permission."};
  }
  Write(session).procedure->isPublic = true;
  return {};
}

// An altered procedure keeps who may run it.
Outcome TdsDatabase::StoreProcedure(TdsSession& session, const std::string& batch, bool isNew) {
  const bool exists = Read(session).procedure.has_value();
  if (isNew && exists)
    throw SqlError{2714, "There is already an object named 'sp_sendPLN' in the database.", 16, "sp_sendPLN"};
  if (!isNew && !exists) throw SqlError{208, "Invalid object name 'sp_sendPLN'.", 16, "sp_sendPLN"};
  auto& procedure = Write(session).procedure;
  procedure = Procedure{batch, exists && procedure->isPublic};
  return {};
}

const TdsDatabase::Contents& TdsDatabase::Read(const TdsSession& session) const {
  if (writer_ != nullptr && writer_ != &session) throw Busy{};
  const auto found = databases_.find(FoldCase(session.database));
  if (found == databases_.end()) throw MissingDatabase(session.database);  // dropped by another connection
  return found->second;
}

TdsDatabase::Contents& TdsDatabase::Write(const TdsSession& session) {
  Read(session);
  if (session.inTransaction && writer_ == nullptr) {
    writer_ = &session;
    snapshot_ = databases_;
  }
  return databases_.at(FoldCase(session.database));
}

std::optional<SqlError> TdsDatabase::Begin(TdsSession& session) {
  session.inTransaction = true;
  return {};
}

std::optional<SqlError> TdsDatabase::Commit(TdsSession& session) {
  if (!session.inTransaction)
    return SqlError{3902, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."};
  End(session, true);
  return {};
}

std::optional<SqlError> TdsDatabase::RollBack(TdsSession& session) {
  if (!session.inTransaction)
    return SqlError{3903, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."};
  End(session, false);
  return {};
}

void TdsDatabase::End(TdsSession& session, bool keepChanges) {
  const std::lock_guard lock(mutex_);
  session.inTransaction = false;
  if (writer_ != &session) return;
  writer_ = nullptr;
  if (!keepChanges) databases_ = std::move(snapshot_);
}

}  // namespace pellorin::tds
