// Installs or updates sp_sendPLN in a database, in one transaction: afterwards the procedure is as asked for,
// or the database is as it was. A failure shows a box that names the step and gives the server's sentence.
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
  bool grantsToAll = false;  // lets PUBLIC execute it; false leaves an earlier grant as it is
  bool allowsTempTables = false;
};

class ProcedureSetup {
 public:
  virtual ~ProcedureSetup() = default;

  // The names of the instance's databases in order; nothing after a failure, which has shown a box. Waits 10
  // seconds for the connection and 30 for the list.
  virtual std::optional<std::vector<std::string>> ListDatabases(const SqlLogin& login) = 0;
  // True when the procedure is installed and committed. Otherwise a box has said why not, or that the outcome
  // is not known.
  virtual bool Install(const SqlLogin& login, const Installation& installation) = 0;
  // The SqlConnection::SecurityNote of the last of these operations; after an installation also whether the
  // procedure is the script's.
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
