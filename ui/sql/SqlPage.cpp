#include "ui/sql/SqlPage.h"

#include <algorithm>

#include "config/SettingKeys.h"
#include "ui/boxes/FailureMessage.h"
#include "ui/controls/ListItems.h"
#include "ui_SqlPage.h"

namespace pellorin {

SqlPage::SqlPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags,
                 FileOperations& files, const InstallerServices& installer)
    : SectionPage(SectionType::Sql, session, messages, tags),
      ui_(std::make_unique<Ui::frmSql>()),
      binding_(messages,
               {.section = [this] { return session_.CurrentSql(); },
                .persist = [this](const std::string& key,
                                  const std::string& value) { session_.PersistSqlSetting(key, value); },
                .refill = [this] { Fill(); }}),
      files_(files),
      installer_(installer) {
  ui_->setupUi(this);
  UseSelector(*ui_->cmbSQLServer);
  MakeTables();
  BindControls();
  BindLists();
}

SqlPage::~SqlPage() = default;

void SqlPage::MakeTables() {
  options_ = {{ui_->optTrusted, SqlKey::kConnectionType, "Trusted"},
              {ui_->optSqlNative, SqlKey::kConnectionType, "Sql", ui_->txtSqlUsername},
              {ui_->optHTML, SqlKey::kDefaultFormat, "HTML"},
              {ui_->optText, SqlKey::kDefaultFormat, "Text"}};
  checks_ = {{ui_->chkEncodeHTML, SqlKey::kEncodeHTML, "0"},
             {ui_->chkAnsiAttachment, SqlKey::kAnsiAttachment, "0"},
             {ui_->chkEmailWhenEmpty, SqlKey::kEmailWhenQueryEmpty, "1"},
             {ui_->chkForceSetUser, SqlKey::kForceSetUser, "0"}};
  texts_ = {{ui_->txtSqlUsername, SqlKey::kSqlUsername},
            {ui_->txtSqlPassword, SqlKey::kSqlPassword},
            {ui_->txtProhibitedTokens, SqlKey::kProhibitedTokens},
            {ui_->txtRedirectAllEmailTo, SqlKey::kRedirectAllEmailTo}};
  numbers_ = {{ui_->txtTimeout, SqlKey::kTimeout, "Timeout must be a number."},
              {ui_->txtLineWidth, SqlKey::kWidth, "Line width must be a number."}};
  lists_ = {{ui_->cmbStylesheet, SqlKey::kStylesheet, "style sheet"},
            {ui_->cmbPrimaryMailServer, SqlKey::kPrimaryMailServer, "primary mail server"},
            {ui_->cmbSecondaryMailServer, SqlKey::kSecondaryMailServer, "backup mail server"},
            {ui_->cmbExceptionMode, SqlKey::kExceptionMode, "exception mode"}};
}

void SqlPage::BindControls() {
  for (const OptionRow& option : options_)
    binding_.OnClick(option.button, [this, &option] {
      Choose(option);
      if (option.focus != nullptr && isVisible()) option.focus->setFocus();
    });
  for (const CheckRow& row : checks_)
    binding_.OnClick(row.box, [this, row] { binding_.Persist(row.key, row.box->isChecked() ? "1" : "0"); });
  for (const TextRow& row : texts_) binding_.Bind(row);
  for (const NumberRow& row : numbers_) binding_.Bind(row);
  binding_.OnChoice(ui_->cmbSQLServer, [this] { ShowSelected(); });
  binding_.OnClick(ui_->btnAddNewSqlServer, [this] { btnAddNewSqlServer_Click(); });
  binding_.OnClick(ui_->btnConfigure, [this] { btnConfigure_Click(); });
  binding_.OnClick(ui_->btnDeleteSqlSettings, [this] { btnDeleteSqlSettings_Click(); });
  binding_.OnClick(ui_->btnTestSqlServer, [this] { emit probeRequested(); });
  for (QLineEdit* part : {ui_->txtSqlUsername, ui_->txtSqlPassword})
    connect(part, &QLineEdit::textChanged, this, &SqlPage::loginChanged);
  for (QRadioButton* option : {ui_->optTrusted, ui_->optSqlNative})
    connect(option, &QRadioButton::toggled, this, &SqlPage::loginChanged);
  connect(this, &SqlPage::loginChanged, this, [this] { ShowSecurity(""); });
  connect(&session_, &ConfigurationSession::documentReplaced, this, [this] { lost_.clear(); });
  connect(&session_, &ConfigurationSession::mailServersChanged, this, [this] { RefreshMailServers(); });
}

void SqlPage::BindLists() {
  for (const ListRow& row : lists_) {
    binding_.AddField(row.key, row.list);
    binding_.OnChoice(row.list, [this, row] { ChooseItem(row, row.list->currentText().toStdString()); });
  }
  const std::pair<QAbstractButton*, QComboBox*> clears[] = {
      {ui_->btnClearStylesheet, ui_->cmbStylesheet},
      {ui_->btnClearprimaryServer, ui_->cmbPrimaryMailServer},
      {ui_->btnClearSecondaryServer, ui_->cmbSecondaryMailServer}};
  for (const auto& [button, list] : clears)
    binding_.OnClick(button, [this, list = list] { ChooseItem(RowOf(list), ""); });
  for (QAbstractButton* button : {ui_->btnRefreshPrimaryServer, ui_->btnRefreshSecondaryServer})
    binding_.OnClick(button, [this] { RefreshMailServers(); });
  binding_.OnClick(ui_->btnRefreshStylesheets, [this] { btnRefreshStylesheets_Click(); });
}

void SqlPage::Choose(const OptionRow& option) {
  option.button->setChecked(true);
  tags_.ToggleControls(ControlTags::TagOf(*option.button));
  binding_.Persist(option.key, option.value);
  if (RowOf(ui_->optTrusted).key == option.key) connection_ = option.button;
  ShowNotice();
}

// An empty text, or one that is not in the list, clears the selection.
void SqlPage::ChooseItem(const ListRow& row, const std::string& text) {
  ForgetLost(row);
  if (!SelectListItem(*row.list, text) && !text.empty()) NoteLost(row, text);
  binding_.Persist(row.key, row.list->currentText().toStdString());
}

const OptionRow& SqlPage::RowOf(const QRadioButton* button) const {
  return *std::ranges::find(options_, button, &OptionRow::button);
}

const SqlPage::ListRow& SqlPage::RowOf(const QComboBox* list) const {
  return *std::ranges::find(lists_, list, &ListRow::list);
}

ShownLogin SqlPage::Login() const {
  return {ui_->optTrusted->isChecked(), TextOf(*ui_->txtSqlUsername), TextOf(*ui_->txtSqlPassword)};
}

bool SqlPage::ValidateSql() {
  return ValidateCurrent("sever");
}

void SqlPage::btnRefreshStylesheets_Click() {
  const std::string chosen = ui_->cmbStylesheet->currentText().toStdString();
  FillStylesheets();
  if (ui_->cmbStylesheet->count() == 0) return;
  ChooseItem(RowOf(ui_->cmbStylesheet),
             chosen.empty() ? ui_->cmbStylesheet->itemText(0).toStdString() : chosen);
}

void SqlPage::btnAddNewSqlServer_Click() {
  if (!CanAdd()) return;
  std::vector<std::string> existing;
  for (const auto& section : session_.Document()->Sections())
    if (section->SectionType == SectionType::Sql && !section->IsDeleted())
      existing.push_back(section->DisplayName());
  frmNewSqlServer dialog(window(), installer_);
  dialog.SetExistingServers(existing);
  dialog.exec();
  if (dialog.Configured()) AddNewSqlServer(dialog);
}

void SqlPage::AddNewSqlServer(const frmNewSqlServer& dialog) {
  Section& section = session_.Document()->Add("SQL:" + dialog.Server(), SectionType::Sql);
  session_.SetCurrent(SectionType::Sql, &section);
  Selector().InsertFirst(section);
  Enable();
  tags_.ToggleSection("Main", true);
  session_.PersistSqlSetting(SqlKey::kConnectionType,
                             dialog.AuthenticationType());  // nothing to be told when shown
  ShowFirst();
  if (dialog.AuthenticationType() != "Trusted") {
    ui_->txtSqlUsername->setText(QString::fromStdString(dialog.Username()));
    ui_->txtSqlPassword->setText(QString::fromStdString(dialog.Password()));
  }
  PersistInstallation(dialog);
  Choose(RowOf(ui_->optText));
  ui_->txtTimeout->setText(QStringLiteral("300"));
  ui_->txtLineWidth->setText(QStringLiteral("0"));
  constexpr const char* kDefaultStylesheet = "default.css";
  if (SelectListItem(*ui_->cmbStylesheet, kDefaultStylesheet))
    ChooseItem(RowOf(ui_->cmbStylesheet), kDefaultStylesheet);
  emit session_.sqlServersChanged();
}

void SqlPage::PersistInstallation(const frmNewSqlServer& dialog) {
  binding_.Persist(SqlKey::kConfiguredDB, dialog.Database());
  binding_.Persist(SqlKey::kAccessType, dialog.AccessType());
  binding_.Persist(SqlKey::kAllowTempTables, std::to_string(dialog.AllowTempTables()));
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
  dialog.setWindowTitle(QStringLiteral("Sql Server Instance ") +
                        QString::fromStdString(section->DisplayName()));
  dialog.exec();
  if (dialog.Configured()) PersistInstallation(dialog);
}

void SqlPage::btnDeleteSqlSettings_Click() {
  if (!ConfirmDeletionOfServer()) return;
  RemoveShown();
  emit session_.sqlServersChanged();
}

}  // namespace pellorin
