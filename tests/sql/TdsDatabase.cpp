#include "tests/sql/TdsDatabase.h"

#include <algorithm>
#include <utility>

#include "base/TextCase.h"

namespace pellorin::tds {
namespace {

std::string_view WithoutLeadingComments(std::string_view batch) {
  const auto skipBehind = [&batch](std::string_view end) {
    const std::size_t found = batch.find(end);
    batch.remove_prefix(found == std::string_view::npos ? batch.size() : found + end.size());
  };
  while (true) {
    batch.remove_prefix(std::min(batch.find_first_not_of(" \t\r\n"), batch.size()));
    if (batch.starts_with("--")) {
      skipBehind("\n");
    } else if (batch.starts_with("/*")) {
      skipBehind("*/");
    } else {
      return batch;
    }
  }
}

// The name in brackets that follows the words. Nothing when the statement begins otherwise.
std::optional<std::string> NameAfter(std::string_view words, std::string_view statement) {
  if (!StartsWithIgnoringCase(statement, words)) return {};
  std::string_view rest = statement.substr(words.size());
  if (!rest.starts_with('[') || !rest.ends_with(']')) return {};
  rest = rest.substr(1, rest.size() - 2);
  std::string name;
  for (; !rest.empty(); rest.remove_prefix(1)) {
    name += rest.front();
    if (rest.starts_with("]]"))
      rest.remove_prefix(1);
    else if (rest.front() == ']')
      throw SqlError{102, "Incorrect syntax near ']'."};
  }
  return name;
}

Database& Find(Databases& databases, const std::string& name) {
  const auto found = databases.find(FoldCase(name));
  if (found == databases.end())
    throw SqlError{911,
                   "Database '" + name + "' does not exist. Make sure that the name is entered correctly."};
  return found->second;
}

}  // namespace

Outcome TdsDatabase::Execute(TdsSession& session, const std::string& batch) {
  const std::lock_guard lock(mutex_);
  try {
    return Run(session, batch);
  } catch (const SqlError& error) {
    return {.error = error};
  }
}

Outcome TdsDatabase::Run(TdsSession& session, const std::string& batch) {
  const std::string_view statement = WithoutLeadingComments(batch);
  const auto is = [statement](std::string_view text) { return EqualIgnoringCase(statement, text); };
  const auto begins = [statement](std::string_view text) { return StartsWithIgnoringCase(statement, text); };

  if (is("select db_name()")) return {.rows = Rows{session.database}};
  if (is("select name from sysdatabases order by name")) {
    Rows names;
    for (const auto& [folded, database] : databases_) names.push_back(database.name);
    return {.rows = names};
  }
  if (const auto name = NameAfter("use ", statement))
    return {.databaseBefore = std::exchange(session.database, Find(databases_, *name).name)};
  if (const auto name = NameAfter("create database ", statement)) {
    databases_[FoldCase(*name)].name = *name;
    return {};
  }
  if (const auto name = NameAfter("drop database ", statement)) {
    if (transactions_ > 0)  // one that a client has left open is in the way, wherever it is
      throw SqlError{3702, "Cannot drop database \"" + *name + "\" because it is currently in use."};
    databases_.erase(FoldCase(Find(databases_, *name).name));
    return {};
  }

  Database& database = Find(session.inTransaction ? *session.inTransaction : databases_, session.database);
  const bool hasProcedure = !database.procedure.empty();
  const SqlError missing{2812, "Could not find stored procedure 'sp_sendPLN'."};
  if (is("select count(*) from sysobjects where xtype='P' and name='sp_sendPLN'"))
    return {.rows = Rows{hasProcedure ? "1" : "0"}};
  if (is("select definition from sys.sql_modules where object_id = object_id('sp_sendPLN')"))
    return {.rows = hasProcedure ? Rows{database.procedure} : Rows{}};
  if (is("select count(*) from sys.database_permissions where major_id = object_id('sp_sendPLN') and "
         "grantee_principal_id = 0"))
    return {.rows = Rows{database.isPublic ? "1" : "0"}};
  if (std::ranges::count(batch, '\'') % 2 != 0)
    throw SqlError{105, "Unclosed quotation mark after the character string ''."};
  if (begins("create procedure sp_sendPLN") || begins("alter procedure sp_sendPLN")) {
    if (begins("create") == hasProcedure)
      throw hasProcedure ? SqlError{2714, "There is already an object named 'sp_sendPLN'."} : missing;
    database.procedure = batch;
  } else if (!hasProcedure) {
    throw missing;
  } else if (is("grant execute on sp_sendPLN to public")) {
    database.isPublic = true;
  } else if (!begins("exec sp_sendPLN ")) {
    throw SqlError{102, "Incorrect syntax near '" + batch.substr(0, 50) + "'."};
  }
  return {};
}

void TdsDatabase::Begin(TdsSession& session) {
  const std::lock_guard lock(mutex_);
  if (!session.inTransaction) ++transactions_;
  session.inTransaction = databases_;
}

std::optional<SqlError> TdsDatabase::End(TdsSession& session, bool keepsChanges) {
  const std::lock_guard lock(mutex_);
  if (!session.inTransaction) return SqlError{3903, "The request has no corresponding BEGIN TRANSACTION."};
  if (keepsChanges) databases_ = *session.inTransaction;
  session.inTransaction.reset();
  --transactions_;
  return {};
}

}  // namespace pellorin::tds
