// Installs or updates sp_sendPLN in a database, in one transaction: it is there as asked for, or the database
// is as it was. Failures are shown as boxes with what the installer was doing and the server's sentence.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/UserMessages.h"
#include "platform/FileOperations.h"
#include "sql/SqlConnection.h"
#include "sql/SqlLogin.h"

namespace pellorin {

struct Installation {
  std::string database;
  bool grantsToAll = false;  // execution to PUBLIC; an earlier grant is never taken back
  bool allowsTempTables = false;
};

class ProcedureSetup {
 public:
  virtual ~ProcedureSetup() = default;

  // The names of the instance's databases in order; nothing when a box has said why. Gives up after 10
  // seconds of connecting and 30 of waiting for the list.
  virtual std::optional<std::vector<std::string>> ListDatabases(const SqlLogin& login) = 0;
  // True when it is done and committed; otherwise a box has said why not, or that it may have been done.
  virtual bool Install(const SqlLogin& login, const Installation& installation) = 0;
  // Of the connection that the last of these operations made: SqlConnection::SecurityNote.
  virtual std::string SecurityNote() const = 0;
};

class ProcedureInstaller : public ProcedureSetup {
 public:
  ProcedureInstaller(SqlConnectionFactory connect, FileOperations& files, std::string programFolder,
                     UserMessages& messages);

  std::optional<std::vector<std::string>> ListDatabases(const SqlLogin& login) override;
  bool Install(const SqlLogin& login, const Installation& installation) override;
  std::string SecurityNote() const override { return securityNote_; }

 private:
  bool Open(SqlConnection& connection, const SqlLogin& login);
  bool Exists(SqlConnection& connection) const;
  std::string Script(bool exists, const Installation& installation);

  SqlConnectionFactory connect_;
  FileOperations& files_;
  std::string programFolder_;
  UserMessages& messages_;
  std::string securityNote_;
};

}  // namespace pellorin
