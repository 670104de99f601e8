#include "ui/frmMain.h"

#include <QShortcut>
#include <QTabBar>
#include <cstdio>

#include "ui/FailureMessage.h"
#include "ui/MailPage.h"
#include "ui/QueuesPage.h"
#include "ui/SaveConfiguration.h"
#include "ui/SqlPage.h"
#include "ui_frmMain.h"

// The pictures lie in this library: without this call the linker leaves them out.
static void LoadPictures() {
  Q_INIT_RESOURCE(resources);
}

namespace pellorin {
namespace {

constexpr const char* kMailTab = "Mail Servers";
constexpr const char* kSqlTab = "Sql Servers";
constexpr const char* kQueuesTab = "Queues";

}  // namespace

frmMain::frmMain(const Components& components)
    : components_(components),
      ui_(std::make_unique<Ui::frmMain>()),
      tags_(*this),
      binding_(components_.messages,
               {.section = [this] { return session_.Admin(); },
                .persist = [this](const std::string& key,
                                  const std::string& value) { session_.PersistAdminSetting(key, value); },
                .refill = [this] { FillScheduler(); }}) {
  LoadPictures();
  ui_->setupUi(this);
  AddPages();
  BindControls();
  IgnoreWheelWithoutFocus(*this);
  LeadTabToChosenOptions(*this);
}

frmMain::~frmMain() = default;

void frmMain::AddPages() {
  mailPage_ = new MailPage(session_, components_.messages, tags_);
  sqlPage_ = new SqlPage(session_, components_.messages, tags_);
  queuesPage_ = new QueuesPage(session_, components_.messages, tags_);
  pages_ = {mailPage_, sqlPage_, queuesPage_};
  const auto addTab = [this](QWidget* page, const char* caption, const char* tip) {
    ui_->tabMain->setTabToolTip(ui_->tabMain->addTab(page, QString::fromUtf8(caption)),
                                QString::fromUtf8(tip));
  };
  addTab(mailPage_, kMailTab, "Configure Mail Servers");
  addTab(sqlPage_, kSqlTab, "Configure Sql Servers");
  addTab(queuesPage_, kQueuesTab, "Configure Queues");
  // The pages joined the window last, but Tab leads through them before the common area below them.
  QWidget* last = previousInFocusChain();
  while (last->focusPolicy() == Qt::NoFocus) last = last->previousInFocusChain();
  for (QWidget* control :
       std::initializer_list<QWidget*>{ui_->txtSchedulerUsername, ui_->txtSchedulerPassword, ui_->btnSave,
                                       ui_->btnCancel, ui_->btnExit, ui_->btnHelp}) {
    setTabOrder(last, control);
    last = control;
  }
}

void frmMain::BindControls() {
  binding_.Bind(TextRow{ui_->txtSchedulerUsername, "SchedulerUsername"});
  binding_.Bind(TextRow{ui_->txtSchedulerPassword, "SchedulerPassword"});
  binding_.OnClick(ui_->btnSave, [this] { btnSave_Click(); });
  binding_.OnClick(ui_->btnCancel, [this] { btnCancel_Click(); });
  binding_.OnClick(ui_->btnExit, [this] { close(); });
  binding_.OnClick(ui_->btnHelp, [this] { btnHelp_Click(); });
  const auto addShortcut = [this](const QKeySequence& keys, QAbstractButton* button) {
    connect(new QShortcut(keys, this), &QShortcut::activated, button, &QAbstractButton::click);
  };
  addShortcut(QKeySequence(QKeySequence::Save), ui_->btnSave);
  addShortcut(QKeySequence(Qt::Key_F1), ui_->btnHelp);

  connect(&session_, &ConfigurationSession::edited, this,
          [this] { setWindowModified(session_.Document() != nullptr && session_.Document()->HasChanges()); });
  connect(&session_, &ConfigurationSession::validationFailed, this, [this](SectionType type) {
    for (SectionPage* page : pages_)
      if (page->Type() == type) ui_->tabMain->setCurrentWidget(page);
  });
}

bool frmMain::Form_Load(const std::string& commandLine) {
  bool isLoaded = false;
  RunGuarded(components_.messages, [&] {
    if (!IsInServiceFolder()) return;
    ReadCommandLine(commandLine);
    StartUp();
    isLoaded = true;
  });
  if (!isLoaded) return false;
  RegisterEventSources();
  show();
  if (installMode_) RunGuarded(components_.messages, [this] { OpenInstallHelp(); });
  return true;
}

bool frmMain::IsInServiceFolder() {
  const std::string folder = components_.mail.InstallFolder();
  if (!folder.empty() && SameFolder(components_.files, components_.programFolder, folder)) return true;
  components_.messages.Show(
      {.text = "While this utility is started in " + components_.programFolder +
               ", Pellorin.DLL is installed in " + folder +
               ". This configuration utility must be started in the same directory as the DLL.",
       .title = "Wrong Location",
       .icon = MessageIcon::Critical});
  return false;
}

void frmMain::ReadCommandLine(const std::string& commandLine) {
  for (const QString& element : QString::fromStdString(commandLine).split(QLatin1Char(','))) {
    if (!element.contains(QStringLiteral("InstallMode"), Qt::CaseInsensitive)) continue;
    installMode_ = true;
    ui_->btnExit->setText(QStringLiteral("Finish"));
  }
}

void frmMain::RegisterEventSources() {
  for (const char* source : {"Pellorin Queue", "Pellorin.exe"}) {
    try {
      components_.eventLog.RegisterSource("EventMsgs.dll", "", components_.programFolder, source, "Pellorin");
    } catch (const NumberedError& error) {  // the configuration can be edited all the same
      std::fprintf(stderr, "PellorinConfig: event-log source \"%s\" not registered: %s: %s\n", source,
                   error.Path().c_str(), error.Description().c_str());
      return;
    }
  }
}

void frmMain::OpenInstallHelp() {
  if (sqlPage_->ShowsConfiguredDatabase()) {
    MakeTabVisible(kSqlTab);
    ShowHelpPage(*this, "UpgradeInfo");
  } else {
    ShowHelpPage(*this, "GettingStarted");
  }
}

void frmMain::StartUp() {
  session_.ReplaceDocument(
      std::make_unique<Ini>(components_.files, components_.programFolder, components_.locale));
  for (SectionPage* page : pages_) page->Selector().Clear();
  Ini& document = *session_.Document();
  document.Load("Pellorin.ini");
  const bool isNew = document.Count() == 0;
  session_.SetCurrent(SectionType::Admin, &document.AdminSection());
  tags_.ToggleSection("Admin", true);
  if (isNew)
    ShowNewInstallation();
  else
    ShowLoaded();
  ReportUnreadNames();
}

void frmMain::ShowLoaded() {
  FillSelectors();
  for (SectionPage* page : pages_) {
    if (page->Selector().IsEmpty()) {
      page->StartBrandNew();
    } else {
      page->Enable();
      page->ShowFirst();
    }
  }
  FillScheduler();
  tags_.ToggleSection("Main", true);
  const bool startsWithMail = sqlPage_->Selector().IsEmpty() || !mailPage_->Selector().IsEmpty();
  MakeTabVisible(startsWithMail ? kMailTab : kSqlTab);
}

void frmMain::FillSelectors() {
  for (const auto& section : session_.Document()->Sections())
    for (SectionPage* page : pages_)
      if (page->Type() == section->SectionType) page->Selector().Append(*section);
}

void frmMain::ShowNewInstallation() {
  for (const char* kind : {"Main", "Mail", "Sql", "Queue"}) StartBrandNew(kind);
  const auto quiet = binding_.KeepQuiet();
  ui_->txtSchedulerUsername->clear();
  ui_->txtSchedulerPassword->clear();
  MakeTabVisible(kMailTab);
}

void frmMain::ShowNothingLoaded() {
  session_.ReplaceDocument(nullptr);
  for (SectionPage* page : pages_) page->Selector().Clear();
  for (const char* kind : {"Main", "Mail", "Sql", "Queue", "Admin"}) StartBrandNew(kind);
  ui_->btnCancel->setEnabled(true);  // loads again once the file is mended
}

void frmMain::FillScheduler() {
  const auto quiet = binding_.KeepQuiet();
  const Section& admin = *session_.Admin();
  ShowValue(*ui_->txtSchedulerUsername, admin, "SchedulerUsername");
  ShowValue(*ui_->txtSchedulerPassword, admin, "SchedulerPassword");
}

void frmMain::ReportUnreadNames() {
  const Ini& document = *session_.Document();
  if (document.NamesNotLoaded().empty()) return;
  std::string message = "This file holds more section names than can be read:\r\n" + document.Path() +
                        "\r\n\r\nNot loaded, and left as they are:";
  std::size_t shown = 0;
  for (const std::string& name : document.NamesNotLoaded()) {
    if (++shown > 20) break;  // a box must fit the screen
    message += "\r\n- " + name;
  }
  if (shown > 20) message += "\r\n- " + std::to_string(document.NamesNotLoaded().size() - 20) + " more";
  ShowInfo(message);
}

void frmMain::StartBrandNew(std::string_view sectionKind) {
  if (sectionKind == "Mail")
    mailPage_->StartBrandNew();
  else if (sectionKind == "Sql")
    sqlPage_->StartBrandNew();
  else if (sectionKind == "Queue")
    queuesPage_->StartBrandNew();
  else
    tags_.StartBrandNew(sectionKind);
}

void frmMain::MakeTabVisible(const std::string& caption) {
  for (int index = 0; index < ui_->tabMain->count(); ++index)
    if (ui_->tabMain->tabText(index).toStdString() == caption) ui_->tabMain->setCurrentIndex(index);
}

void frmMain::ShowInfo(const std::string& message) {
  components_.messages.Show({.text = message, .title = "Tessary Configuration"});
}

void frmMain::ShowHelpTopic(QWidget& owner, const std::string& topic) {
  components_.help.ShowTopic(owner, JoinPath(components_.programFolder, "Pellorin.chm"), topic);
}

void frmMain::ShowHelpPage(QWidget& owner, const std::string& pageName) {
  components_.help.ShowTopic(owner, JoinPath(components_.programFolder, pageName + ".chm"),
                             pageName + ".htm");
}

void frmMain::btnSave_Click() {
  if (session_.Document() == nullptr) return;
  if (SaveConfiguration(session_, components_.messages) == SaveOutcome::Saved)
    components_.messages.Show(
        {.text = "Settings Saved", .title = "Settings", .icon = MessageIcon::Information});
}

void frmMain::btnCancel_Click() {
  if (session_.Document() != nullptr) {
    if (!session_.Document()->HasChanges()) return;
    if (components_.messages.Show({.text = "Are you sure you want to cancel? All changes will be lost.",
                                   .title = "Cancel Changes",
                                   .buttons = MessageButtons::YesNoCancel}) != Answer::Yes)
      return;
  }
  if (!RunGuarded(components_.messages, [this] { StartUp(); })) ShowNothingLoaded();
}

void frmMain::btnHelp_Click() {
  const bool isSql = ui_->tabMain->tabText(ui_->tabMain->currentIndex()).toStdString() == kSqlTab;
  // There is no topic on queues: their page opens the mail servers' topic.
  ShowHelpTopic(*this,
                isSql ? "ConfigurationGuide.htm#SqlServersTab" : "ConfigurationGuide.htm#MailServersTab");
}

void frmMain::closeEvent(QCloseEvent* event) {
  bool mayClose = false;
  RunGuarded(components_.messages, [&] { mayClose = MayClose(); });
  event->setAccepted(mayClose);
}

bool frmMain::ConfirmIncomplete(const char* title, const char* servers) {
  return components_.messages.Show(
             {.text =
                  std::string("You do not have any ") + servers +
                  " Servers configured. Pellorin will not be able to function in this configuration. Do you "
                  "really want to exit?",
              .title = title,
              .buttons = MessageButtons::YesNoCancel}) == Answer::Yes;
}

bool frmMain::MayClose() {
  const Ini* document = session_.Document();
  if (document == nullptr) return true;
  if (document->NumOfSections(SectionType::Mail) == 0) {
    if (!ConfirmIncomplete("Incomplete Mail Server Configuration", "Mail")) return false;
  } else if (document->NumOfSections(SectionType::Sql) == 0) {
    if (!ConfirmIncomplete("Incomplete SQL Server Configuration", "SQL")) return false;
  }
  if (!document->HasChanges()) return true;
  const Answer answer = components_.messages.Show({.text = "Would you like to save changes?",
                                                   .title = "Save Changes",
                                                   .buttons = MessageButtons::YesNoCancel});
  if (answer == Answer::No) return true;
  return answer == Answer::Yes && SaveConfiguration(session_, components_.messages) == SaveOutcome::Saved;
}

}  // namespace pellorin
