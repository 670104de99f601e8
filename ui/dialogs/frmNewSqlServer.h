// The dialog "New Sql Server Instance": chooses an instance and a database, and installs or updates
// sp_sendPLN there. Its properties are what its controls show; setting one does not ask the server. Set the
// instance before the database.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sql/ProcedureInstaller.h"
#include "ui/boxes/GuardedEvents.h"
#include "ui/dialogs/ScriptReview.h"

namespace Ui {
class frmNewSqlServer;
}

namespace pellorin {

// What the dialog works with.
struct InstallerServices {
  ProcedureSetup& setup;
  UserMessages& messages;
  FileOperations& files;
  std::function<std::vector<std::string>()> localInstances;  // empty names are skipped
  std::string programFolder;                                 // of the install script
  std::function<void(QWidget& owner)> showHelp;
};

class frmNewSqlServer : public QDialog {
  Q_OBJECT

 public:
  frmNewSqlServer(QWidget* owner, const InstallerServices& services);
  ~frmNewSqlServer() override;

  std::string Server() const;
  void SetServer(const std::string& server);
  std::string Database() const;
  void SetDatabase(const std::string& database);
  std::string AuthenticationType() const;  // "Trusted" or "Sql"
  void SetAuthenticationType(const std::string& type);
  std::string Username() const;
  void SetUsername(const std::string& name);
  std::string Password() const;
  void SetPassword(const std::string& password);
  std::string AccessType() const;  // "public" or "sysadmin"
  void SetAccessType(const std::string& type);
  int AllowTempTables() const;  // 0 or 1
  void SetAllowTempTables(int allow);
  bool Configured() const { return configured_; }  // the procedure was installed
  // Whether the last connection was encrypted; empty once another instance or login is chosen.
  std::string SecurityNote() const;

  // For an instance that is already configured: its name cannot be changed and is not checked.
  void SetIsServerReadOnly(bool isReadOnly);
  // The configured instances, to be refused as duplicates. Without this call none is.
  void SetExistingServers(std::vector<std::string> names) { existingServers_ = std::move(names); }

  void UseTrusted();
  void UseNative();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void BindControls();
  void FillInstances();
  void MuteNotices();
  void ClearDatabases();
  void LoadDatabases();
  void ShowDatabases(const std::vector<std::string>& names);
  SqlLogin Login() const;
  bool IsDuplicate() const;
  bool HasValidName() const;
  void ForgetConnection();
  void ShowSecurity(const std::string& note);
  void KeepRoomForNotice();
  void Warn(const std::string& title, const std::string& text) const;
  void btnSetup_Click();

  std::unique_ptr<Ui::frmNewSqlServer> ui_;
  InstallerServices services_;
  GuardedEvents events_;
  ScriptReview review_;
  std::optional<std::vector<std::string>> existingServers_;
  bool configured_ = false;
  bool hasLoadFailed_ = false;  // then the focus alone does not load them again
};

}  // namespace pellorin
