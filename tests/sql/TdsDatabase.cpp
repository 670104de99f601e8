#include "tests/sql/TdsDatabase.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/TextCase.h"
#include "tests/sql/SqlTokens.h"

namespace pellorin::tds {
namespace {

using Values = std::vector<CallValue>;
using Column = ResultSet::Column;

constexpr const char* kParameters[] = {
    "@recipients", "@message", "@query", "@attachments", "@copy_recipients", "@blind_copy_recipients",
    "@subject",    "@queue"};

Outcome Count(bool found) {
  return {.result = ResultSet{Column::kCount, {found ? "1" : "0"}}};
}

SqlError MissingDatabase(const std::string& name) {
  return {911, "Database '" + name + "' does not exist. Make sure that the name is entered correctly."};
}

Database& Current(const TdsSession& session, Databases& databases) {
  const auto found = databases.find(FoldCase(session.database));
  if (found == databases.end()) throw MissingDatabase(session.database);  // dropped by another connection
  return found->second;
}

std::string ValueOf(const SqlToken& token, const Values& values) {
  if (token.kind == SqlToken::Kind::kText) return token.text;
  for (const CallValue& value : values)
    if (EqualIgnoringCase(value.name, token.text)) return value.value.value_or("");
  if (!token.text.starts_with("@")) throw SyntaxError(token.text);
  throw SqlError{137, "Must declare the scalar variable \"" + token.text + "\"."};
}

// Reads `@name = value, …` behind EXEC and the name of the procedure.
Mail Arguments(const std::vector<SqlToken>& statement, const Values& values) {
  std::size_t position = 2;
  const auto take = [&]() -> const SqlToken& {
    if (position == statement.size()) throw SyntaxError(statement.back().text);
    return statement[position++];
  };
  const auto takeSign = [&take](const char* sign) {
    const SqlToken& token = take();
    if (token.kind != SqlToken::Kind::kSign || token.text != sign) throw SyntaxError(token.text);
  };
  Mail mail;
  while (position < statement.size()) {
    if (!mail.empty()) takeSign(",");
    const std::string name = take().text;
    if (std::find(std::begin(kParameters), std::end(kParameters), name) == std::end(kParameters))
      throw SqlError{8145, name + " is not a parameter for procedure sp_sendPLN."};
    takeSign("=");
    mail[name] = ValueOf(take(), values);
  }
  return mail;
}

// Stands for the procedure: records its parameters instead of sending mail.
Outcome Send(Database& database, const std::string& procedure, const Mail& mail) {
  if (!database.procedure || !EqualIgnoringCase(procedure, "sp_sendPLN"))
    throw SqlError{2812, "Could not find stored procedure '" + procedure + "'."};
  const auto recipients = mail.find("@recipients");
  if (recipients == mail.end() || recipients->second.empty())
    throw SqlError{50000, "No recipients were given."};
  database.mail.push_back(mail);
  return {.ranProcedure = true};
}

Outcome ListMail(const Database& database, const std::string& column) {
  ResultSet values;
  for (const Mail& mail : database.mail) {
    const auto found = mail.find("@" + column);
    values.rows.push_back(found == mail.end() ? std::nullopt : std::optional(found->second));
  }
  return {.result = values};
}

// An altered procedure keeps who may run it.
Outcome Store(Database& database, const std::string& batch, bool isNew) {
  if (isNew && database.procedure)
    throw SqlError{2714, "There is already an object named 'sp_sendPLN' in the database."};
  if (!isNew && !database.procedure) throw SqlError{208, "Invalid object name 'sp_sendPLN'."};
  database.procedure = batch;
  return {};
}

Outcome Grant(Database& database) {
  if (!database.procedure)
    throw SqlError{15151, "Cannot find the object 'sp_sendPLN', because it does not exist."};
  database.isPublic = true;
  return {};
}

}  // namespace

Outcome TdsDatabase::Execute(TdsSession& session, const std::string& batch, const Values& values) {
  const std::lock_guard lock(mutex_);
  try {
    return Run(session, batch, values);
  } catch (const SqlError& error) {
    return {.error = error};
  }
}

Outcome TdsDatabase::Run(TdsSession& session, const std::string& batch, const Values& values) {
  const std::vector<SqlToken> statement = SqlScanner(batch).Tokens();
  const auto is = [&statement](const char* pattern) { return MatchStatement(statement, pattern); };
  if (is("select name from sysdatabases order by name")) {
    ResultSet names;
    for (const auto& [folded, database] : databases_) names.rows.emplace_back(database.name);
    return {.result = names};
  }
  if (is("select db_name()")) return {.result = ResultSet{Column::kText, {session.database}}};
  if (const auto name = is("use _")) {
    const auto found = databases_.find(FoldCase(*name));
    if (found == databases_.end()) throw MissingDatabase(*name);
    return {.databaseBefore = std::exchange(session.database, found->second.name)};
  }
  if (const auto name = is("create database _")) {
    databases_[FoldCase(*name)].name = *name;
    return {};
  }
  if (const auto name = is("drop database _")) {
    if (transactions_ > 0)  // one that a client has left open is in the way, wherever it is
      throw SqlError{3702, "Cannot drop database \"" + *name + "\" because it is currently in use."};
    if (databases_.erase(FoldCase(*name)) == 0) throw MissingDatabase(*name);
    return {};
  }
  Database& database = Current(session, session.inTransaction ? *session.inTransaction : databases_);
  if (is("select count(*) from sysobjects where xtype='P' and name='sp_sendPLN'"))
    return Count(database.procedure.has_value());
  if (is("select definition from sys.sql_modules where object_id = object_id('sp_sendPLN')")) {
    ResultSet definition;
    if (database.procedure) definition.rows.push_back(database.procedure);
    return {.result = definition};
  }
  if (is("select count(*) from sys.database_permissions where major_id = object_id('sp_sendPLN') and "
         "grantee_principal_id = 0"))
    return Count(database.isPublic);
  if (is("grant execute on sp_sendPLN to public")) return Grant(database);
  if (const auto column = is("select _ from PellorinStandInMail order by id"))
    return ListMail(database, *column);
  if (is("create procedure sp_sendPLN …")) return Store(database, batch, true);
  if (is("alter procedure sp_sendPLN …")) return Store(database, batch, false);
  if (const auto procedure = is("exec _ …")) return Send(database, *procedure, Arguments(statement, values));
  throw SyntaxError(batch.substr(0, 50));
}

void TdsDatabase::Begin(TdsSession& session) {
  const std::lock_guard lock(mutex_);
  if (!session.inTransaction) ++transactions_;
  session.inTransaction = databases_;
}

std::optional<SqlError> TdsDatabase::End(TdsSession& session, bool keepsChanges) {
  const std::lock_guard lock(mutex_);
  if (!session.inTransaction)
    return SqlError{keepsChanges ? 3902 : 3903, "The request has no corresponding BEGIN TRANSACTION."};
  if (keepsChanges) databases_ = *session.inTransaction;
  session.inTransaction.reset();
  --transactions_;
  return {};
}

}  // namespace pellorin::tds
