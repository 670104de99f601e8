// The dialog "New Sql Server Instance": picks an instance and a database and installs sp_sendPLN there. Its
// properties are read by whoever showed it, once Configured says that the installation is done. Setting a
// property asks no server anything.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/UserMessages.h"
#include "sql/ProcedureInstaller.h"

namespace Ui {
class frmNewSqlServer;
}

namespace pellorin {

// What the dialog works with.
struct InstallerServices {
  ProcedureSetup& setup;
  UserMessages& messages;
  std::function<std::vector<std::string>()> localInstances;  // empty names are skipped
  std::string programFolder;
  std::function<void(QWidget& owner)> showHelp;
};

class frmNewSqlServer : public QDialog {
  Q_OBJECT

 public:
  frmNewSqlServer(QWidget* owner, const InstallerServices& services);
  ~frmNewSqlServer() override;

  bool Configured() const { return isConfigured_; }
  std::string Server() const;
  void SetServer(const std::string& server);  // empties the list of databases
  void SetIsServerReadOnly(bool isReadOnly);
  std::string Database() const;
  void SetDatabase(const std::string& database);
  std::string AuthenticationType() const;  // "Trusted" or "Sql"
  void SetAuthenticationType(const std::string& type);
  std::string Username() const;
  void SetUsername(const std::string& username);
  std::string Password() const;
  void SetPassword(const std::string& password);
  std::string AccessType() const;  // "public" or "sysadmin"
  void SetAccessType(const std::string& type);
  int AllowTempTables() const;  // 0 or 1
  void SetAllowTempTables(int allowed);
  // The instances that are configured already; without them any name will do.
  void SetExistingServers(std::vector<std::string> servers) { existingServers_ = std::move(servers); }

  void UseTrusted();
  void UseNative();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BindControls();
  void FillServers();
  void EnableLogin(bool isOn);
  SqlLogin Login() const;
  void LoadDatabases();
  void ShowDatabases(const std::vector<std::string>& names);
  void Refuse(const std::string& text, const char* title);
  bool MayInstall();
  void btnSetup_Click();

  std::unique_ptr<Ui::frmNewSqlServer> ui_;
  InstallerServices services_;
  std::optional<std::vector<std::string>> existingServers_;
  bool isConfigured_ = false;
  bool hasFailed_ = false;  // to list the databases, with what is in the controls now
};

}  // namespace pellorin
