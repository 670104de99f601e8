#include "ui/dialogs/frmNewSqlServer.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QShortcut>
#include <QSignalBlocker>
#include <algorithm>

#include "base/TextCase.h"
#include "config/SectionNames.h"
#include "dialogs/ui_frmNewSqlServer.h"
#include "ui/boxes/BusyWindow.h"
#include "ui/boxes/FailureMessage.h"
#include "ui/controls/ControlTags.h"
#include "ui/controls/ControlValues.h"
#include "ui/controls/InputHabits.h"
#include "ui/controls/LabelColumns.h"
#include "ui/controls/ScrollingPart.h"

namespace pellorin {
namespace {

// False for focus that comes back when a box closes or the window is activated.
bool IsMovedByUser(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::MouseFocusReason ||
         reason == Qt::ShortcutFocusReason;
}

// Shows the text as it is, and selects the entry of exactly that text if there is one.
void ShowText(QComboBox& list, const QString& text) {
  list.setCurrentIndex(list.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
  list.setEditText(text);
  list.lineEdit()->setCursorPosition(0);  // a long name shows its beginning
}

}  // namespace

frmNewSqlServer::frmNewSqlServer(QWidget* owner, const InstallerServices& services)
    : QDialog(owner),
      ui_(std::make_unique<Ui::frmNewSqlServer>()),
      services_(services),
      events_(services.messages),
      review_(*this, services.messages, services.files, services.programFolder) {
  ui_->setupUi(this);
  AlignLabelColumns(*this);
  setPalette(ControlTags::WithReadableDisabledText(palette()));
  for (QComboBox* list : {ui_->ddcSqlServers, ui_->cmbDatabase})
    list->setCompleter(nullptr);  // names are taken as typed, not completed
  ApplyInputHabits(*this);
  MuteNotices();
  KeepRoomForNotice();
  FillInstances();
  BindControls();
  SetAuthenticationType("Trusted");
  SetAccessType("sysadmin");
}

frmNewSqlServer::~frmNewSqlServer() = default;

// So that nothing moves when the notice appears.
void frmNewSqlServer::KeepRoomForNotice() {
  ui_->lblConnectionNotice->KeepPlace();
  ui_->lblConnectionNotice->setMinimumHeight(2 * fontMetrics().lineSpacing());
}

void frmNewSqlServer::BindControls() {
  ui_->cmbDatabase->installEventFilter(this);
  connect(ui_->ddcSqlServers, &QComboBox::editTextChanged, this, [this] { ClearDatabases(); });
  events_.OnChoice(ui_->ddcSqlServers, [this] { ClearDatabases(); });
  events_.OnClick(ui_->optTrusted, [this] { UseTrusted(); });
  events_.OnClick(ui_->optSqlNative, [this] { UseNative(); });
  for (QLineEdit* part : {ui_->txtSqlUsername, ui_->txtSqlPassword})
    events_.OnEdit(part, [this] { ForgetConnection(); });
  events_.OnClick(ui_->btnRefresh, [this] { LoadDatabases(); });
  events_.OnClick(ui_->btnReviewSource, [this] { review_.Open(); });
  events_.OnClick(ui_->btnSetup, [this] { btnSetup_Click(); });
  events_.OnClick(ui_->btnCancel, [this] { hide(); });
  events_.OnClick(ui_->btnHelp, [this] { services_.showHelp(*this); });
  connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, ui_->btnHelp,
          &QAbstractButton::click);
}

void frmNewSqlServer::FillInstances() {
  for (const std::string& instance : services_.localInstances())
    if (!instance.empty()) ui_->ddcSqlServers->addItem(QString::fromStdString(instance));
  if (ui_->ddcSqlServers->count() > 0) ui_->ddcSqlServers->setCurrentIndex(0);
}

void frmNewSqlServer::MuteNotices() {
  for (QLabel* notice : {ui_->lblSetupNotice, ui_->lblLoginNotice, ui_->lblGrantNotice}) {
    QFont small = notice->font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    notice->setFont(small);
    notice->setForegroundRole(QPalette::PlaceholderText);
  }
}

std::string frmNewSqlServer::Server() const {
  return TextOf(*ui_->ddcSqlServers);
}

void frmNewSqlServer::SetServer(const std::string& server) {
  ShowText(*ui_->ddcSqlServers, QString::fromStdString(server));
}

std::string frmNewSqlServer::Database() const {
  return TextOf(*ui_->cmbDatabase);
}

void frmNewSqlServer::SetDatabase(const std::string& database) {
  ShowText(*ui_->cmbDatabase, QString::fromStdString(database));
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

void frmNewSqlServer::SetUsername(const std::string& name) {
  SetText(*ui_->txtSqlUsername, name);
}

std::string frmNewSqlServer::Password() const {
  return TextOf(*ui_->txtSqlPassword);
}

void frmNewSqlServer::SetPassword(const std::string& password) {
  SetText(*ui_->txtSqlPassword, password);
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

void frmNewSqlServer::SetAllowTempTables(int allow) {
  ui_->chkAllowTempTables->setChecked(allow != 0);
}

void frmNewSqlServer::SetIsServerReadOnly(bool isReadOnly) {
  ControlTags::Switch(*ui_->ddcSqlServers, !isReadOnly);
  if (isReadOnly)
    ui_->lblLoginNotice->setText(QStringLiteral(
        "These credentials are for this installation only: the service's own stay as they are."));
}

void frmNewSqlServer::UseTrusted() {
  ControlTags::Switch(*ui_->txtSqlUsername, false);
  ControlTags::Switch(*ui_->txtSqlPassword, false);
  ForgetConnection();
}

void frmNewSqlServer::UseNative() {
  ControlTags::Switch(*ui_->txtSqlUsername, true);
  ControlTags::Switch(*ui_->txtSqlPassword, true);
  ForgetConnection();
  if (isVisible()) ui_->txtSqlUsername->setFocus();
}

void frmNewSqlServer::showEvent(QShowEvent* event) {
  FitScreen(*this);
  QDialog::showEvent(event);
}

std::string frmNewSqlServer::SecurityNote() const {
  return ui_->lblConnectionNotice->text().toStdString();
}

void frmNewSqlServer::ShowSecurity(const std::string& note) {
  ui_->lblConnectionNotice->Say(note);
}

// Drops what was learnt with another instance or login.
void frmNewSqlServer::ForgetConnection() {
  hasLoadFailed_ = false;
  ShowSecurity("");
}

bool frmNewSqlServer::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->cmbDatabase && event->type() == QEvent::FocusIn &&
      IsMovedByUser(static_cast<QFocusEvent*>(event)->reason()) && ui_->cmbDatabase->count() == 0 &&
      !hasLoadFailed_)
    RunGuarded(services_.messages, [this] { LoadDatabases(); });
  return QDialog::eventFilter(watched, event);
}

// Keeps a database that was typed, but not one from the other instance's list.
void frmNewSqlServer::ClearDatabases() {
  const QString text = ui_->cmbDatabase->currentText();
  const bool isListed = ui_->cmbDatabase->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0;
  ui_->cmbDatabase->clear();
  ui_->cmbDatabase->setEditText(isListed ? QString() : text);
  ForgetConnection();
}

void frmNewSqlServer::LoadDatabases() {
  if (Server().empty() || (AuthenticationType() == "Sql" && Username().empty())) return;
  hasLoadFailed_ = true;
  if (!HasValidName()) return;
  const BusyWindow busy(*this);
  const auto names = services_.setup.ListDatabases(Login());
  ShowSecurity(services_.setup.SecurityNote());
  if (names) ShowDatabases(*names);
  hasLoadFailed_ = !names;
}

void frmNewSqlServer::ShowDatabases(const std::vector<std::string>& names) {
  QComboBox& list = *ui_->cmbDatabase;
  const QString text = list.currentText();
  const QSignalBlocker quiet(list);
  list.clear();
  for (const std::string& name : names) list.addItem(QString::fromStdString(name));
  if (text.isEmpty())
    SelectListItem(list, "master");
  else
    ShowText(list, text);
}

SqlLogin frmNewSqlServer::Login() const {
  return {Server(), AuthenticationType() == "Trusted", Username(), Password()};
}

bool frmNewSqlServer::IsDuplicate() const {
  return existingServers_ && std::ranges::any_of(*existingServers_, [this](const std::string& name) {
           return EqualIgnoringCase(name, Server());
         });
}

// The name becomes part of the name of a section.
bool frmNewSqlServer::HasValidName() const {
  const std::string problem = ui_->ddcSqlServers->isEnabled() ? NameProblem(Server()) : "";
  if (!problem.empty()) Warn("Invalid Name", problem);
  return problem.empty();
}

void frmNewSqlServer::Warn(const std::string& title, const std::string& text) const {
  services_.messages.Show({.text = text, .title = title, .icon = MessageIcon::Exclamation});
}

void frmNewSqlServer::btnSetup_Click() {
  if (Database().empty() || Server().empty()) {
    Warn("Missing Information",
         "Please provide a server name and a database name for the installation to proceed");
    return;
  }
  if (IsDuplicate()) {
    Warn("Duplicate Entry", "A server with this name already configured");
    return;
  }
  if (!HasValidName()) return;
  if (const std::string problem = ValueProblem(Database()); !problem.empty()) {
    Warn("Invalid Name", problem);
    return;
  }
  {
    const BusyWindow busy(*this);
    configured_ = services_.setup.Install(Login(), {.database = Database(),
                                                    .grantsToAll = AccessType() == "public",
                                                    .allowsTempTables = AllowTempTables() == 1});
    ShowSecurity(services_.setup.SecurityNote());
  }
  if (configured_) hide();
}

}  // namespace pellorin
