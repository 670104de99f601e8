#include "sql/ProcedureInstaller.h"

#include <utility>

#include "sql/InstallScript.h"
#include "sql/InstalledProcedure.h"
#include "sql/OpenConnection.h"

namespace pellorin {
namespace {

constexpr const char* kNoPermission =
    " The account you use to connect to the database may have insufficient permissions.";

void ShowSqlError(UserMessages& messages, const std::string& sentence, const NumberedError& error) {
  messages.Show({.text = sentence + "\r\n" + error.DescriptionAndPath(),
                 .title = "SQL Error",
                 .icon = MessageIcon::Exclamation});
}

// A failure does not matter: the server may have ended the transaction already.
void RollBack(SqlConnection& connection) {
  try {
    connection.RollBackTransaction();
  } catch (const SqlError&) {
    return;
  }
}

}  // namespace

ProcedureInstaller::ProcedureInstaller(SqlConnectionFactory connect, FileOperations& files,
                                       std::string programFolder, UserMessages& messages)
    : connect_(std::move(connect)),
      files_(files),
      programFolder_(std::move(programFolder)),
      messages_(messages) {}

bool ProcedureInstaller::Open(SqlConnection& connection, const SqlLogin& login) {
  const bool isOpen = OpenConnection(connection, login, messages_);
  securityNote_ = connection.SecurityNote();
  return isOpen;
}

std::optional<std::vector<std::string>> ProcedureInstaller::ListDatabases(const SqlLogin& login) {
  const auto connection = connect_();
  connection->ConnectionTimeout = std::chrono::seconds(10);
  connection->CommandTimeout = std::chrono::seconds(30);
  if (!Open(*connection, login)) return std::nullopt;
  try {
    return connection->QueryColumn("select name from sysdatabases order by name");
  } catch (const SqlError& error) {
    ShowSqlError(
        messages_,
        "Could not retrieve the list of databases. Please make sure that the account you use to connect "
        "has sufficient permissions.",
        error);
    return std::nullopt;
  }
}

bool ProcedureInstaller::Exists(SqlConnection& connection) const {
  const auto count =
      connection.QueryColumn("select count(*) from sysobjects where xtype='P' and name='sp_sendPLN'");
  return !count.empty() && count.front() == "1";
}

std::string ProcedureInstaller::Script(bool exists, const Installation& installation) {
  std::string script = ReadScriptFile(files_, programFolder_, kInstallScript);
  if (exists) script = AlteringScript(script);
  return installation.allowsTempTables ? ScriptWithoutBlock(script) : script;
}

bool ProcedureInstaller::Install(const SqlLogin& login, const Installation& installation) {
  const auto connection = connect_();
  if (!Open(*connection, login)) return false;
  const std::string cannotCreate = std::string("Could not create sp_sendPLN procedure.") + kNoPermission;
  std::string sentence = cannotCreate;  // to show if the current step fails
  bool exists = false;
  try {
    connection->BeginTransaction();
    sentence = "Could not switch the database context to " + installation.database + "." + kNoPermission;
    connection->SetDefaultDatabase(installation.database);
    sentence = std::string("Could not determine if the stored procedure already exists in the database.") +
               kNoPermission;
    exists = Exists(*connection);
    sentence = cannotCreate;
    connection->Execute(Script(exists, installation));
    if (installation.grantsToAll) {
      sentence = std::string("Could not grant access to this procedure to role PUBLIC.") + kNoPermission;
      connection->Execute("GRANT EXECUTE ON sp_sendPLN to PUBLIC");
    }
    sentence = cannotCreate;
    connection->CommitTransaction();
    securityNote_ += "\r\n" + InstalledProcedureNote(*connection, files_, programFolder_);
    return true;
  } catch (const CommitInDoubt& error) {
    connection->Close();
    ShowSqlError(messages_,
                 std::string("The server did not answer the commit: sp_sendPLN may have been ") +
                     (exists ? "updated" : "created") +
                     ". Please check the database, or run the setup again.",
                 error);
    return false;
  } catch (const NumberedError& error) {
    RollBack(*connection);
    ShowSqlError(messages_, sentence, error);
    return false;
  }
}

}  // namespace pellorin
