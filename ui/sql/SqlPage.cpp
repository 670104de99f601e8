#include "ui/sql/SqlPage.h"

#include "config/SettingKeys.h"
#include "config/StyleSheets.h"
#include "sql/ui_SqlPage.h"
#include "ui/controls/ControlValues.h"
#include "ui/controls/LabelColumns.h"

namespace pellorin {
namespace {

const QString kNoDatabase = QStringLiteral("None");

}  // namespace

SqlPage::SqlPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags,
                 const InstallerServices& installer)
    : SectionPage(SectionType::Sql, session, messages, tags,
                  QStringLiteral("No SQL Server yet. Press Add to install sp_sendPLN in an instance.")),
      ui_(std::make_unique<Ui::SqlPage>()),
      installer_(installer) {
  ui_->setupUi(this);
  AlignLabelColumns(*this);
  UseSelector(*ui_->cmbSQLServer);
  AddRows();
  BindControls();
  BindLogin();
}

SqlPage::~SqlPage() = default;

void SqlPage::AddRows() {
  form_.Add(
      OptionRow{.key = SqlKey::kConnectionType,
                .options = {{ui_->optTrusted, "Trusted"}, {ui_->optSqlNative, "Sql", ui_->txtSqlUsername}},
                .valueOf = [this](const std::string& stored) { return ShownConnection(stored); },
                .whenNone = ui_->optTrusted,
                .onChosen =
                    [this](const Option& option) {
                      connection_ = option.value;
                      ShowNotice();
                    }});
  form_.Add(
      OptionRow{.key = SqlKey::kDefaultFormat,
                .options = {{ui_->optHTML, "HTML"}, {ui_->optText, "Text"}},
                .valueOf = [](const std::string& stored) { return stored == "HTML" ? "HTML" : "Text"; }},
      SettingsForm::WhenShown::Stores);
  form_.Add(CheckRow{ui_->chkEncodeHTML, SqlKey::kEncodeHTML});
  form_.Add(CheckRow{ui_->chkAnsiAttachment, SqlKey::kAnsiAttachment});
  form_.Add(CheckRow{ui_->chkEmailWhenEmpty, SqlKey::kEmailWhenQueryEmpty, "1"});
  form_.Add(CheckRow{ui_->chkForceSetUser, SqlKey::kForceSetUser});
  form_.Add(TextRow{ui_->txtSqlUsername, SqlKey::kSqlUsername});
  form_.Add(TextRow{ui_->txtSqlPassword, SqlKey::kSqlPassword});
  form_.Add(TextRow{ui_->txtProhibitedTokens, SqlKey::kProhibitedTokens});
  form_.Add(TextRow{ui_->txtRedirectAllEmailTo, SqlKey::kRedirectAllEmailTo});
  events_.OnEdit(ui_->txtRedirectAllEmailTo, [this] { ShowNotice(); });
  form_.Add(NumberRow{ui_->txtTimeout, SqlKey::kTimeout, "Timeout must be a number."});
  form_.Add(NumberRow{ui_->txtLineWidth, SqlKey::kWidth, "Line width must be a number."});
  AddListRow(ui_->cmbStylesheet, SqlKey::kStylesheet, "style sheet");
  AddListRow(ui_->cmbPrimaryMailServer, SqlKey::kPrimaryMailServer, "primary mail server");
  AddListRow(ui_->cmbSecondaryMailServer, SqlKey::kSecondaryMailServer, "backup mail server");
  AddListRow(ui_->cmbExceptionMode, SqlKey::kExceptionMode, "exception mode");
}

// For a missing setting nothing is selected, and no empty text is stored.
void SqlPage::AddListRow(QComboBox* list, const char* key, const char* content) {
  const auto noteLost = [this, key, content](const std::string& name) {
    const Section& instance = *session_.CurrentSql();
    if (name.empty())
      notices_.ForgetLost(instance, key);
    else
      notices_.NoteLost(instance, key, content, name);
    ShowNotice();
  };
  form_.Add(ListRow{list, key, noteLost}, SettingsForm::WhenShown::StoresIfPresent);
}

void SqlPage::BindControls() {
  events_.OnClick(ui_->btnAddNewSqlServer, [this] { btnAddNewSqlServer_Click(); });
  events_.OnClick(ui_->btnConfigure, [this] { btnConfigure_Click(); });
  events_.OnClick(ui_->btnDeleteSqlSettings, [this] { btnDeleteSqlSettings_Click(); });
  events_.OnClick(ui_->btnTestSqlServer, [this] { emit probeRequested(); });
  events_.OnClick(ui_->btnClearStylesheet, [this] { form_.Choose(ui_->cmbStylesheet, ""); });
  events_.OnClick(ui_->btnClearprimaryServer, [this] { form_.Choose(ui_->cmbPrimaryMailServer, ""); });
  events_.OnClick(ui_->btnClearSecondaryServer, [this] { form_.Choose(ui_->cmbSecondaryMailServer, ""); });
  events_.OnClick(ui_->btnRefreshPrimaryServer, [this] { RefreshMailServers(); });
  events_.OnClick(ui_->btnRefreshSecondaryServer, [this] { RefreshMailServers(); });
  events_.OnClick(ui_->btnRefreshStylesheets, [this] { btnRefreshStylesheets_Click(); });
  connect(&session_, &ConfigurationSession::documentReplaced, this, [this] { notices_.Clear(); });
  connect(&session_, &ConfigurationSession::mailServersChanged, this, [this] { RefreshMailServers(); });
}

void SqlPage::BindLogin() {
  for (QLineEdit* part : {ui_->txtSqlUsername, ui_->txtSqlPassword})
    connect(part, &QLineEdit::textChanged, this, &SqlPage::loginChanged);
  for (QRadioButton* option : {ui_->optTrusted, ui_->optSqlNative})
    connect(option, &QRadioButton::toggled, this, &SqlPage::loginChanged);
  connect(this, &SqlPage::loginChanged, this, [this] { ShowSecurity(""); });
}

// Without a known connection type, the login shown before stays.
std::string SqlPage::ShownConnection(const std::string& stored) {
  if (stored == "Trusted" || stored == "Sql") connection_ = stored;
  return connection_;
}

void SqlPage::ShowCurrent() {
  RunGuarded(messages_, [this] {
    const ConfigurationSession::Edits edits(session_);
    emit loginChanged();
    Fill();
    ShowNotice();
    if (session_.CurrentSql()->CanBeWritten()) form_.StoreShown();
  });
}

void SqlPage::Fill() {
  SectionPage::Fill();
  ShowDatabase();
}

SqlLogin SqlPage::Login() const {
  const Section* instance = session_.CurrentSql();
  return {instance == nullptr ? std::string() : instance->DisplayName(), ui_->optTrusted->isChecked(),
          TextOf(*ui_->txtSqlUsername), TextOf(*ui_->txtSqlPassword)};
}

bool SqlPage::ValidateSql() {
  return ValidateCurrent("sever");
}

void SqlPage::ShowNotice() {
  const Section* instance = session_.CurrentSql();
  const std::string text = instance == nullptr ? std::string() : notices_.Text(*instance);
  ui_->lblSqlNotice->Say(text);
  emit noticed(!text.empty());
}

void SqlPage::ShowSecurity(const std::string& note) {
  ui_->lblSqlConnection->Say(note);
}

void SqlPage::ShowDatabase() {
  const Section* instance = session_.CurrentSql();
  const std::string database =
      instance == nullptr ? std::string() : instance->GetValue(SqlKey::kConfiguredDB);
  ui_->lblConfiguredDB->setText(
      database.empty()
          ? kNoDatabase
          : QString::fromStdString(database + " (" + instance->GetValue(SqlKey::kAccessType) + " access) "));
  ui_->lblConfiguredDB->setToolTip(ui_->lblConfiguredDB->text());
}

bool SqlPage::ShowsConfiguredDatabase() const {
  return ui_->lblConfiguredDB->text() != kNoDatabase;
}

void SqlPage::StartBrandNew() {
  SectionPage::StartBrandNew();
  connection_.clear();
  emit loginChanged();
  ShowDatabase();
  ShowNotice();
}

void SqlPage::LoadLists() {
  FillStylesheets();
  RefreshMailServers();
}

void SqlPage::FillStylesheets() {
  const QSignalBlocker blocker(ui_->cmbStylesheet);
  ui_->cmbStylesheet->clear();
  for (const std::string& name : StyleSheetNames(installer_.files, installer_.programFolder))
    ui_->cmbStylesheet->addItem(QString::fromStdString(name));
  ui_->cmbStylesheet->setCurrentIndex(-1);
}

void SqlPage::RefreshMailServers() {
  const Section* instance = session_.CurrentSql();
  const std::pair<QComboBox*, const char*> lists[] = {
      {ui_->cmbPrimaryMailServer, SqlKey::kPrimaryMailServer},
      {ui_->cmbSecondaryMailServer, SqlKey::kSecondaryMailServer}};
  for (const auto& [list, key] : lists) {
    const QSignalBlocker blocker(list);
    list->clear();
    for (const Section* section : session_.Document()->SectionsOf(SectionType::Mail))
      list->addItem(QString::fromStdString(section->DisplayName()));
    SelectListItem(*list, instance == nullptr ? std::string() : instance->GetValue(key));
  }
}

void SqlPage::btnRefreshStylesheets_Click() {
  const std::string chosen = TextOf(*ui_->cmbStylesheet);
  FillStylesheets();
  if (ui_->cmbStylesheet->count() == 0) return;
  form_.Choose(ui_->cmbStylesheet, chosen.empty() ? ui_->cmbStylesheet->itemText(0).toStdString() : chosen);
}

void SqlPage::btnAddNewSqlServer_Click() {
  if (!CanAdd()) return;
  std::vector<std::string> existing;
  for (const Section* section : session_.Document()->SectionsOf(SectionType::Sql))
    existing.push_back(section->DisplayName());
  frmNewSqlServer dialog(window(), installer_);
  dialog.SetExistingServers(existing);
  dialog.exec();
  if (dialog.Configured()) AddNewSqlServer(dialog);
}

void SqlPage::AddNewSqlServer(const frmNewSqlServer& dialog) {
  ShowAdded(session_.Document()->Add("SQL:" + dialog.Server(), SectionType::Sql));
  // Stored before the instance is shown, so that no notice reports a missing connection type.
  session_.PersistSqlSetting(SqlKey::kConnectionType, dialog.AuthenticationType());
  ShowFirst();
  if (dialog.AuthenticationType() != "Trusted") {
    SetText(*ui_->txtSqlUsername, dialog.Username());
    SetText(*ui_->txtSqlPassword, dialog.Password());
  }
  PersistInstallation(dialog);
  form_.Choose(ui_->optText);
  SetText(*ui_->txtTimeout, "300");
  SetText(*ui_->txtLineWidth, "0");
  constexpr const char* kDefaultStylesheet = "default.css";
  if (SelectListItem(*ui_->cmbStylesheet, kDefaultStylesheet))
    form_.Choose(ui_->cmbStylesheet, kDefaultStylesheet);
  emit session_.sqlServersChanged();
}

void SqlPage::PersistInstallation(const frmNewSqlServer& dialog) {
  form_.Store(SqlKey::kConfiguredDB, dialog.Database());
  form_.Store(SqlKey::kAccessType, dialog.AccessType());
  form_.Store(SqlKey::kAllowTempTables, std::to_string(dialog.AllowTempTables()));
  ShowDatabase();
  ShowSecurity(dialog.SecurityNote());
}

void SqlPage::btnConfigure_Click() {
  const Section* section = session_.CurrentSql();
  if (section == nullptr) return;
  frmNewSqlServer dialog(window(), installer_);
  dialog.SetServer(section->DisplayName());
  dialog.SetIsServerReadOnly(true);
  dialog.SetDatabase(section->GetValue(SqlKey::kConfiguredDB));
  dialog.SetAccessType(section->GetValue(SqlKey::kAccessType));
  dialog.SetAllowTempTables(section->GetValue(SqlKey::kAllowTempTables) == "1" ? 1 : 0);
  if (ui_->optSqlNative->isChecked()) {
    dialog.SetAuthenticationType("Sql");
    dialog.SetUsername(TextOf(*ui_->txtSqlUsername));
    dialog.SetPassword(TextOf(*ui_->txtSqlPassword));
  }
  dialog.setWindowTitle(QString::fromStdString("Sql Server Instance " + section->DisplayName()));
  dialog.exec();
  if (dialog.Configured()) PersistInstallation(dialog);
}

void SqlPage::btnDeleteSqlSettings_Click() {
  if (!ConfirmDeletionOfServer()) return;
  RemoveShown();
  emit session_.sqlServersChanged();
}

}  // namespace pellorin
