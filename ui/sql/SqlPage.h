// The page "Sql Servers": shows one instance at a time and stores each edit at once. Showing an instance
// stores what its format and its lists show, unless its section cannot be written. A stored name that a list
// does not offer is lost then, and the page says so. Instances are added, and their procedure is installed
// again, through the installer's dialog.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "ui/dialogs/frmNewSqlServer.h"
#include "ui/pages/SectionPage.h"
#include "ui/sql/InstanceNotices.h"

namespace Ui {
class SqlPage;
}

namespace pellorin {

class SqlPage : public SectionPage {
  Q_OBJECT

 public:
  SqlPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags,
          const InstallerServices& installer);
  ~SqlPage() override;

  void StartBrandNew() override;
  bool ValidateSql();                          // reports what is invalid; true when no instance is shown
  void LoadLists();                            // of style sheets and mail servers; stores nothing
  SqlLogin Login() const;                      // as it is shown, saved or not
  void ShowSecurity(const std::string& note);  // of the last connection to the shown instance
  bool ShowsConfiguredDatabase() const;        // whether the shown instance's procedure is installed anywhere

 signals:
  void noticed(bool hasNotice);  // whether the page has a notice about the shown instance
  void loginChanged();  // another instance or login is shown: what is known about the last one is old

 protected:
  void Fill() override;
  void ShowCurrent() override;
  bool ValidateShown() override { return ValidateSql(); }

 private:
  void AddRows();
  void AddListRow(QComboBox* list, const char* key, const char* content);
  void BindControls();
  void BindLogin();
  std::string ShownConnection(const std::string& stored);
  void ShowNotice();
  void ShowDatabase();
  void FillStylesheets();
  void RefreshMailServers();
  void AddNewSqlServer(const frmNewSqlServer& dialog);
  void PersistInstallation(const frmNewSqlServer& dialog);

  void btnAddNewSqlServer_Click();
  void btnConfigure_Click();
  void btnDeleteSqlSettings_Click();
  void btnRefreshStylesheets_Click();

  std::unique_ptr<Ui::SqlPage> ui_;
  InstallerServices installer_;
  InstanceNotices notices_;
  std::string connection_;  // the known connection type shown last; empty before the first one
};

}  // namespace pellorin
