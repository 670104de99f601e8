#include "ui/frmMain.h"

#include <QShortcut>
#include <QTimer>
#include <algorithm>

#include "config/SettingKeys.h"
#include "platform/Paths.h"
#include "ui/StartUp.h"
#include "ui/boxes/FailureMessage.h"
#include "ui/controls/InputHabits.h"
#include "ui/controls/OffReason.h"
#include "ui/controls/ScrollingPart.h"
#include "ui/mail/MailPage.h"
#include "ui/pages/ClosingQuestions.h"
#include "ui/pages/SaveConfiguration.h"
#include "ui/probes/MailServerProbe.h"
#include "ui/probes/QueueProbe.h"
#include "ui/probes/SqlServerProbe.h"
#include "ui/probes/WatchedWork.h"
#include "ui/queues/QueuesPage.h"
#include "ui/sql/SqlPage.h"
#include "ui_frmMain.h"

// The pictures are in this library: without this call the linker leaves them out.
static void LoadPictures() {
  Q_INIT_RESOURCE(resources);
}

namespace pellorin {
namespace {

std::unique_ptr<Ui::frmMain> MakeControls(QWidget& window) {
  LoadPictures();
  auto controls = std::make_unique<Ui::frmMain>();
  controls->setupUi(&window);
  return controls;
}

// Drawn from ui/images/icon.svg.
QIcon ProgramIcon() {
  QIcon icon;
  for (const char* size : {"16", "32", "64"})
    icon.addFile(QStringLiteral(":/images/icon-%1.png").arg(QLatin1String(size)));
  return icon;
}

}  // namespace

frmMain::frmMain(const Components& components)
    : components_(components),
      probes_{session_,
              components_.messages,
              components_.mail,
              components_.connect,
              [this](const std::string& doing) {
                return std::make_unique<WatchedWork>(*this, *ui_->lblStatus, doing, components_.mail);
              },
              [this](const std::string& note) { ShowSecurity(note); },
              [this](const std::vector<ConversationLine>& lines) { mailPage_->ShowConversation(lines); },
              addresses_,
              components_.files,
              components_.programFolder},
      ui_(MakeControls(*this)),
      controlTags_(*this),
      events_(components_.messages),
      scheduler_({session_, SectionType::Admin, components_.messages, controlTags_, events_},
                 [this] { scheduler_.Fill(); }),
      tabs_(*ui_->tabMain) {
  setPalette(ControlTags::WithReadableDisabledText(palette()));
  ui_->lblStatus->KeepPlace();
  AddPages();
  LeadTabThroughPagesFirst();
  BindControls();
  BindSession();
  BindProbes();
  ApplyInputHabits(*this);
  ExplainWhatIsOff(*this);
}

frmMain::~frmMain() = default;

void frmMain::AddPages() {
  mailPage_ = new MailPage(session_, components_.messages, controlTags_);
  sqlPage_ = new SqlPage(session_, components_.messages, controlTags_,
                         {components_.setup, components_.messages, components_.files,
                          components_.localInstances, components_.programFolder, [this](QWidget& owner) {
                            ShowHelpTopic(owner, "ConfigurationGuide.htm#NewSqlServerInstanceDialog");
                          }});
  queuesPage_ =
      new QueuesPage(session_, components_.messages, controlTags_, components_.locale,
                     [this](QWidget& owner) { ShowHelpTopic(owner, "ConfigurationGuide.htm#QueuesTab"); });
  pages_ = {mailPage_, sqlPage_, queuesPage_};
  tabs_.Add(*mailPage_, kMailTab, mailPage_->Kind(), "Configure Mail Servers");
  tabs_.Add(*sqlPage_, kSqlTab, sqlPage_->Kind(), "Configure Sql Servers");
  tabs_.Add(*queuesPage_, kQueuesTab, queuesPage_->Kind(), "Configure Queues");
  connect(sqlPage_, &SqlPage::noticed, this, [this](bool hasNotice) { tabs_.Mark(*sqlPage_, hasNotice); });
  connect(sqlPage_, &SqlPage::loginChanged, queuesPage_, [this] { queuesPage_->ShowSecurity(""); });
}

// The pages joined the window last, but are above the common area.
void frmMain::LeadTabThroughPagesFirst() {
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
  scheduler_.Add(TextRow{ui_->txtSchedulerUsername, AdminKey::kSchedulerUsername});
  scheduler_.Add(TextRow{ui_->txtSchedulerPassword, AdminKey::kSchedulerPassword});
  events_.OnClick(ui_->btnSave, [this] { btnSave_Click(); });
  events_.OnClick(ui_->btnCancel, [this] { btnCancel_Click(); });
  events_.OnClick(ui_->btnExit, [this] { close(); });
  events_.OnClick(ui_->btnHelp, [this] { btnHelp_Click(); });
  const auto addShortcut = [this](const QKeySequence& keys, QAbstractButton* button) {
    connect(new QShortcut(keys, this), &QShortcut::activated, button, &QAbstractButton::click);
  };
  addShortcut(QKeySequence(QKeySequence::Save), ui_->btnSave);
  addShortcut(QKeySequence(Qt::Key_F1), ui_->btnHelp);
  tabs_.ChooseByKeys(*this);
}

void frmMain::BindSession() {
  connect(&session_, &ConfigurationSession::edited, this, [this] {
    const bool hasChanges = session_.Document() != nullptr && session_.Document()->HasChanges();
    setWindowModified(hasChanges);
    if (hasChanges) controlTags_.ToggleSection("Main", true);  // what can be edited can be saved
    tabs_.MarkUnusableQueues(*queuesPage_, session_.Document());
  });
  connect(&session_, &ConfigurationSession::validationFailed, this, &frmMain::ShowFaulty);
}

void frmMain::BindProbes() {
  const auto onProbe = [this](SectionPage* page, auto probe) {
    connect(page, &SectionPage::probeRequested, this,
            [this, probe] { RunGuarded(components_.messages, probe); });
  };
  onProbe(mailPage_, [this] { MailServerProbe(probes_).Run(); });
  onProbe(sqlPage_, [this] { SqlServerProbe(probes_, sqlPage_->Login()).Run(); });
  onProbe(queuesPage_, [this] { QueueProbe(probes_, sqlPage_->Login()).Run(); });
}

bool frmMain::Form_Load(const std::string& commandLine) {
  bool isLoaded = false;
  RunGuarded(components_.messages, [&] {
    if (!IsInServiceFolder(components_)) return;
    if (IsInstallMode(commandLine)) EnterInstallMode();
    StartUp();
    isLoaded = true;
  });
  if (!isLoaded) return false;
  RegisterEventSources(components_);
  StackCommonAreaOnNarrowScreen();
  FitScreen(*this);
  show();
  QTimer::singleShot(0, this, [this] { setWindowIcon(ProgramIcon()); });  // reading it delays the first frame
  if (installMode_) RunGuarded(components_.messages, [this] { OpenInstallHelp(); });
  return true;
}

// The buttons under the scheduler's account, where one row would leave its boxes too few letters.
void frmMain::StackCommonAreaOnNarrowScreen() {
  constexpr int kLettersInSight = 11;
  const int box = ui_->txtSchedulerUsername->minimumSizeHint().width();
  const int lacking = std::max(0, kLettersInSight * fontMetrics().averageCharWidth() - box);
  if (minimumSizeHint().width() + 2 * lacking > RoomOnScreen(*this).width())
    ui_->commonAreaLayout->setDirection(QBoxLayout::TopToBottom);
}

void frmMain::EnterInstallMode() {
  installMode_ = true;
  ui_->btnExit->setText(QStringLiteral("Finish"));
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
  ui_->lblStatus->Say(WriteProtectionNotice(components_.files, document.Path()));
  sqlPage_->LoadLists();
  const bool isNew = document.Count() == 0;
  session_.SetCurrent(SectionType::Admin, &document.AdminSection());
  controlTags_.ToggleSection("Admin", true);
  if (isNew)
    ShowNewInstallation();
  else
    ShowLoaded();
  if (const std::string message = UnreadNamesMessage(document); !message.empty()) ShowInfo(message);
}

void frmMain::FillSelectors() {
  for (const auto& section : session_.Document()->Sections())
    for (SectionPage* page : pages_)
      if (page->Type() == section->SectionType) page->Selector().Append(*section);
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
  scheduler_.Fill();
  tabs_.MarkUnusableQueues(*queuesPage_, session_.Document());
  controlTags_.ToggleSection("Main", true);
  const bool startsWithMail = sqlPage_->Selector().IsEmpty() || !mailPage_->Selector().IsEmpty();
  MakeTabVisible(startsWithMail ? kMailTab : kSqlTab);
}

void frmMain::ShowNewInstallation() {
  StartBrandNew("Main");
  for (const SectionPage* page : pages_) StartBrandNew(page->Kind());
  scheduler_.Fill();  // a file may hold the scheduler's account and nothing else
  MakeTabVisible(kMailTab);
}

void frmMain::ShowNothingLoaded() {
  session_.ReplaceDocument(nullptr);
  for (SectionPage* page : pages_) page->Selector().Clear();
  StartBrandNew("Main");
  for (const SectionPage* page : pages_) StartBrandNew(page->Kind());
  StartBrandNew("Admin");
  ui_->btnCancel->setEnabled(true);  // loads again once the file is mended
}

void frmMain::StartBrandNew(std::string_view sectionKind) {
  for (SectionPage* page : pages_)
    if (page->Kind() == sectionKind) return page->StartBrandNew();
  controlTags_.StartBrandNew(sectionKind);
}

void frmMain::ShowFaulty(Section* faulty) {
  for (SectionPage* page : pages_) {
    if (page->Type() != faulty->SectionType) continue;
    tabs_.Show(*page);
    page->ShowFaulty(*faulty);
  }
  if (faulty->SectionType == SectionType::Admin)
    scheduler_.FocusFirst(faulty->FaultySettings(), *ui_->txtSchedulerUsername);
}

void frmMain::ShowSecurity(const std::string& note) {
  if (tabs_.IsShown(*queuesPage_))
    queuesPage_->ShowSecurity(note);
  else
    sqlPage_->ShowSecurity(note);
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

// There is no topic on queues: their page opens the mail servers' topic.
void frmMain::btnHelp_Click() {
  const bool isSql = tabs_.VisibleCaption() == kSqlTab;
  ShowHelpTopic(*this,
                isSql ? "ConfigurationGuide.htm#SqlServersTab" : "ConfigurationGuide.htm#MailServersTab");
}

void frmMain::closeEvent(QCloseEvent* event) {
  bool mayClose = false;
  RunGuarded(components_.messages, [&] { mayClose = MayClose(session_, components_.messages); });
  event->setAccepted(mayClose);
}

}  // namespace pellorin
