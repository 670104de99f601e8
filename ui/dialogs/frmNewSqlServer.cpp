#include "ui/dialogs/frmNewSqlServer.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTimer>
#include <algorithm>

#include "config/SectionNames.h"
#include "platform/TextCase.h"
#include "ui/BusyWindow.h"
#include "ui/ControlBinding.h"
#include "ui/ControlTags.h"
#include "ui/FailureMessage.h"
#include "ui/ListItems.h"
#include "ui/ScriptReview.h"
#include "ui_frmNewSqlServer.h"

namespace pellorin {

frmNewSqlServer::frmNewSqlServer(QWidget* owner, const InstallerServices& services)
    : QDialog(owner), ui_(std::make_unique<Ui::frmNewSqlServer>()), services_(services) {
  ui_->setupUi(this);
  for (QComboBox* list : {ui_->ddcSqlServers, ui_->cmbDatabase})
    list->setCompleter(nullptr);  // stored as typed
  for (QLabel* notice : {ui_->lblSetupNotice, ui_->lblLoginNotice, ui_->lblGrantNotice})
    notice->setForegroundRole(QPalette::PlaceholderText);
  FillServers();
  ui_->optTrusted->setChecked(true);
  ui_->optSysAdminOnly->setChecked(true);
  UseTrusted();
  BindControls();
  IgnoreWheelWithoutFocus(*this);
  AllowAnyLength(*this);
  LeadTabToChosenOptions(*this);
}

frmNewSqlServer::~frmNewSqlServer() = default;

void frmNewSqlServer::FillServers() {
  for (const std::string& name : services_.localInstances())
    if (!name.empty()) ui_->ddcSqlServers->addItem(QString::fromStdString(name));
}

void frmNewSqlServer::BindControls() {
  const auto onClick = [this](QAbstractButton* button, auto handler) {
    connect(button, &QAbstractButton::clicked, this,
            [this, handler] { RunGuarded(services_.messages, handler); });
  };
  onClick(ui_->btnRefresh, [this] { LoadDatabases(); });
  onClick(ui_->btnSetup, [this] { btnSetup_Click(); });
  onClick(ui_->btnCancel, [this] { reject(); });
  onClick(ui_->btnHelp, [this] { services_.showHelp(*this); });
  onClick(ui_->btnReviewSource, [this] { ReviewScript(*this, services_.messages, services_.programFolder); });
  onClick(ui_->optTrusted, [this] { UseTrusted(); });
  onClick(ui_->optSqlNative, [this] { UseNative(); });
  connect(ui_->ddcSqlServers, &QComboBox::editTextChanged, this, [this] {
    ui_->cmbDatabase->clear();
    hasFailed_ = false;
  });
  for (QLineEdit* text : {ui_->txtSqlUsername, ui_->txtSqlPassword})
    connect(text, &QLineEdit::textChanged, this, [this] { hasFailed_ = false; });
  ui_->cmbDatabase->installEventFilter(this);
}

std::string frmNewSqlServer::Server() const {
  return ui_->ddcSqlServers->currentText().toStdString();
}
void frmNewSqlServer::SetServer(const std::string& server) {
  ui_->ddcSqlServers->setEditText(QString::fromStdString(server));
}
void frmNewSqlServer::SetIsServerReadOnly(bool isReadOnly) {
  ui_->ddcSqlServers->setEnabled(!isReadOnly);
  ui_->lblLoginNotice->setVisible(!isReadOnly);  // what is configured keeps its credentials
}
std::string frmNewSqlServer::Database() const {
  return ui_->cmbDatabase->currentText().toStdString();
}
void frmNewSqlServer::SetDatabase(const std::string& database) {
  ui_->cmbDatabase->setEditText(QString::fromStdString(database));
}
std::string frmNewSqlServer::AuthenticationType() const {
  return ui_->optTrusted->isChecked() ? "Trusted" : "Sql";
}
void frmNewSqlServer::SetAuthenticationType(const std::string& type) {
  const bool isTrusted = type == "Trusted";
  (isTrusted ? ui_->optTrusted : ui_->optSqlNative)->setChecked(true);
  isTrusted ? UseTrusted() : UseNative();
}
std::string frmNewSqlServer::Username() const {
  return TextOf(*ui_->txtSqlUsername);
}
void frmNewSqlServer::SetUsername(const std::string& username) {
  ui_->txtSqlUsername->setText(QString::fromStdString(username));
}
std::string frmNewSqlServer::Password() const {
  return TextOf(*ui_->txtSqlPassword);
}
void frmNewSqlServer::SetPassword(const std::string& password) {
  ui_->txtSqlPassword->setText(QString::fromStdString(password));
}
std::string frmNewSqlServer::AccessType() const {
  return ui_->optAllUsers->isChecked() ? "public" : "sysadmin";
}
void frmNewSqlServer::SetAccessType(const std::string& type) {
  (type == "public" ? ui_->optAllUsers : ui_->optSysAdminOnly)->setChecked(true);
}
int frmNewSqlServer::AllowTempTables() const {
  return ui_->chkAllowTempTables->isChecked() ? 1 : 0;
}
void frmNewSqlServer::SetAllowTempTables(int allowed) {
  ui_->chkAllowTempTables->setChecked(allowed != 0);
}

void frmNewSqlServer::UseTrusted() {
  EnableLogin(false);
}

void frmNewSqlServer::UseNative() {
  EnableLogin(true);
  if (isVisible()) ui_->txtSqlUsername->setFocus();
}

void frmNewSqlServer::EnableLogin(bool isOn) {
  hasFailed_ = false;
  for (QLineEdit* text : {ui_->txtSqlUsername, ui_->txtSqlPassword}) ControlTags::Switch(*text, isOn);
}

SqlLogin frmNewSqlServer::Login() const {
  return {Server(), ui_->optTrusted->isChecked(), Username(), Password()};
}

// The list loads itself when the user goes to it: not when the focus comes back from a box or another window.
bool frmNewSqlServer::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->cmbDatabase && event->type() == QEvent::FocusIn) {
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    const bool isUsers = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                         reason == Qt::MouseFocusReason || reason == Qt::ShortcutFocusReason;
    if (isUsers && ui_->cmbDatabase->count() == 0 && !hasFailed_)
      QTimer::singleShot(0, this, [this] { RunGuarded(services_.messages, [this] { LoadDatabases(); }); });
  }
  return QDialog::eventFilter(watched, event);
}

void frmNewSqlServer::LoadDatabases() {
  const SqlLogin login = Login();
  if (login.server.empty() || (!login.isTrusted && login.user.empty())) return;
  const BusyWindow busy(*this);
  const auto names = services_.setup.ListDatabases(login);
  hasFailed_ = !names;
  if (names) ShowDatabases(*names);
}

void frmNewSqlServer::ShowDatabases(const std::vector<std::string>& names) {
  const std::string typed = Database();
  const QSignalBlocker blocker(ui_->cmbDatabase);
  ui_->cmbDatabase->clear();
  for (const std::string& name : names) ui_->cmbDatabase->addItem(QString::fromStdString(name));
  SelectListItem(*ui_->cmbDatabase, "master");
  if (!typed.empty()) SetDatabase(typed);
}

void frmNewSqlServer::Refuse(const std::string& text, const char* title) {
  services_.messages.Show({.text = text, .title = title, .icon = MessageIcon::Exclamation});
}

bool frmNewSqlServer::MayInstall() {
  const std::string server = Server();
  if (Database().empty() || server.empty()) {
    Refuse("Please provide a server name and a database name for the installation to proceed",
           "Missing Information");
    return false;
  }
  const auto& existing = existingServers_ ? *existingServers_ : std::vector<std::string>();
  if (std::any_of(existing.begin(), existing.end(),
                  [&](const std::string& name) { return EqualIgnoringCase(name, server); })) {
    Refuse("A server with this name already configured", "Duplicate Entry");
    return false;
  }
  const std::string problem = ui_->ddcSqlServers->isEnabled() ? NameProblem(server) : std::string();
  if (!problem.empty()) Refuse(problem, "Invalid Name");
  return problem.empty();
}

void frmNewSqlServer::btnSetup_Click() {
  if (!MayInstall()) return;
  {
    const BusyWindow busy(*this);
    isConfigured_ = services_.setup.Install(
        Login(), {Database(), ui_->optAllUsers->isChecked(), ui_->chkAllowTempTables->isChecked()});
  }
  if (isConfigured_) accept();
}

}  // namespace pellorin
