// The page "Sql Servers": shows one instance at a time and writes each change of a control into its section
// at once. Showing an instance stores what its format and its lists show, unless its section cannot be
// written; a stored name that a list does not hold is lost then, and named on the page. Instances are added,
// and their procedure is installed again, through the installer's dialog.
#pragma once

#include <QCheckBox>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/dialogs/frmNewSqlServer.h"
#include "ui/pages/ControlBinding.h"
#include "ui/pages/SectionPage.h"
#include "ui/probes/Probe.h"

namespace Ui {
class frmSql;
}

namespace pellorin {

class SqlPage : public SectionPage {
  Q_OBJECT

 public:
  SqlPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags,
          FileOperations& files, const InstallerServices& installer);
  ~SqlPage() override;

  void StartBrandNew() override;
  bool ValidateSql();  // reports what is invalid; true when no instance is shown
  void LoadLists();    // of style sheets and mail servers; stores nothing
  ShownLogin Login() const;
  void ShowSecurity(const std::string& note);  // of the last connection to the shown instance
  bool ShowsConfiguredDatabase() const;        // whether the shown instance's procedure is installed anywhere

 signals:
  void noticed(bool hasNotice);  // whether the page names something that was lost
  void loginChanged();           // another instance or login is shown: what was learnt of the last one is old

 protected:
  ControlBinding& Binding() override { return binding_; }
  void ShowCurrent() override;
  bool ValidateShown() override { return ValidateSql(); }

 private:
  struct CheckRow {
    QCheckBox* box;
    const char* key;
    const char* defaultValue;
  };
  struct ListRow {
    QComboBox* list;
    const char* key;
    const char* content;  // one entry of it, in a sentence
  };

  void MakeTables();
  void BindControls();
  void BindLists();

  void Fill();  // the controls from the settings; stores nothing
  void FillOptions(const Section& instance);
  void StoreShown();
  void NoteLost(const ListRow& row, const std::string& value);
  void ForgetLost(const ListRow& row);
  void ShowNotice();
  void ShowDatabase();

  const OptionRow& RowOf(const QRadioButton* button) const;
  const ListRow& RowOf(const QComboBox* list) const;
  void FillMailServers(QComboBox& list);
  void FillStylesheets();
  void RefreshMailServers();
  void Choose(const OptionRow& option);  // as the user would, but for the focus
  void ChooseItem(const ListRow& row, const std::string& text);
  void AddNewSqlServer(const frmNewSqlServer& dialog);
  void PersistInstallation(const frmNewSqlServer& dialog);

  void btnAddNewSqlServer_Click();
  void btnConfigure_Click();
  void btnDeleteSqlSettings_Click();
  void btnRefreshStylesheets_Click();

  std::unique_ptr<Ui::frmSql> ui_;
  ControlBinding binding_;
  FileOperations& files_;
  InstallerServices installer_;
  std::vector<OptionRow> options_;
  const QRadioButton* connection_ = nullptr;  // the login shown; none before the first one
  std::vector<CheckRow> checks_;
  std::vector<TextRow> texts_;
  std::vector<NumberRow> numbers_;
  std::vector<ListRow> lists_;
  std::map<std::string, std::map<std::string, std::string>>
      lost_;  // sentences by section and key, until loading
};

}  // namespace pellorin
