#include "ui/frmMain.h"

#include <QShortcut>
#include <QStyle>
#include <QTabBar>
#include <utility>

#include "config/SettingKeys.h"
#include "platform/Paths.h"
#include "ui/boxes/FailureMessage.h"
#include "ui/controls/SingleLineInput.h"
#include "ui/mail/MailPage.h"
#include "ui/pages/SaveConfiguration.h"
#include "ui/probes/MailServerProbe.h"
#include "ui/probes/QueueProbe.h"
#include "ui/probes/SqlServerProbe.h"
#include "ui/probes/WatchedWork.h"
#include "ui/queues/QueuesPage.h"
#include "ui/sql/SqlPage.h"
#include "ui_frmMain.h"

// The pictures lie in this library: without this call the linker leaves them out.
static void LoadPictures() {
  Q_INIT_RESOURCE(resources);
}

namespace pellorin {
namespace {

const std::string kQueuesTip = "Configure Queues";

}  // namespace

frmMain::frmMain(const Components& components)
    : components_(components),
      probes_{session_,
              components_.messages,
              components_.mail,
              components_.connect,
              [this] { return std::make_unique<WatchedWork>(*this, components_.mail); },
              [this](const std::string& note) { ShowSecurity(note); }},
      ui_(std::make_unique<Ui::frmMain>()),
      tags_(*this),
      binding_(components_.messages,
               {.section = [this] { return session_.Admin(); },
                .persist = [this](const std::string& key,
                                  const std::string& value) { session_.PersistAdminSetting(key, value); },
                .refill = [this] { FillScheduler(); }}) {
  LoadPictures();
  ui_->setupUi(this);
  setPalette(ControlTags::WithReadableDisabledText(palette()));
  setWindowIcon(QIcon(QStringLiteral(":/images/logo.gif")));
  AddPages();
  BindControls();
  BindProbes();
  IgnoreWheelWithoutFocus(*this);
  AllowAnyLength(*this);
  KeepInputToOneLine(*this);
  LeadTabToChosenOptions(*this);
}

frmMain::~frmMain() = default;

void frmMain::AddPages() {
  mailPage_ = new MailPage(session_, components_.messages, tags_);
  sqlPage_ = new SqlPage(session_, components_.messages, tags_, components_.files,
                         {components_.setup, components_.messages, components_.localInstances,
                          components_.programFolder, [this](QWidget& owner) {
                            ShowHelpTopic(owner, "ConfigurationGuide.htm#NewSqlServerInstanceDialog");
                          }});
  queuesPage_ =
      new QueuesPage(session_, components_.messages, tags_, components_.locale,
                     [this](QWidget& owner) { ShowHelpTopic(owner, "ConfigurationGuide.htm#QueuesTab"); });
  pages_ = {mailPage_, sqlPage_, queuesPage_};
  const auto addTab = [this](QWidget* page, const char* caption, const char* key, const std::string& tip) {
    const int index = ui_->tabMain->addTab(page, QString::fromUtf8(caption));
    ui_->tabMain->tabBar()->setTabData(index, QString::fromUtf8(key));
    ui_->tabMain->setTabToolTip(index, QString::fromStdString(tip));
  };
  addTab(mailPage_, kMailTab, "Mail", "Configure Mail Servers");
  addTab(sqlPage_, kSqlTab, "Sql", "Configure Sql Servers");
  addTab(queuesPage_, kQueuesTab, "Queue", kQueuesTip);
  // What is named on a page that nobody looks at must not be missed.
  connect(sqlPage_, &SqlPage::noticed, this, [this](bool hasNotice) { MarkTab(*sqlPage_, hasNotice); });
  connect(sqlPage_, &SqlPage::loginChanged, queuesPage_, [this] { queuesPage_->ShowSecurity(""); });
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

void frmMain::MarkTab(const QWidget& page, bool hasNotice) {
  ui_->tabMain->setTabIcon(ui_->tabMain->indexOf(&page),
                           hasNotice ? style()->standardIcon(QStyle::SP_MessageBoxWarning) : QIcon());
}

// From the start on, though the page names the reason only when such a queue is chosen.
void frmMain::MarkUnusableQueues() {
  constexpr std::size_t kMostNames = 12;  // a tip must fit the screen
  std::string names;
  std::size_t count = 0;
  if (session_.Document() != nullptr)
    for (const auto& section : session_.Document()->Sections())
      if (!section->QueueProblem().empty() && !section->IsDeleted() && ++count <= kMostNames)
        names += "\r\n" + section->Name;
  if (count > kMostNames) names += "\r\nand " + std::to_string(count - kMostNames) + " more";
  if (std::exchange(unusableQueues_, names) == names) return;  // marking a tab lays out the window anew
  MarkTab(*queuesPage_, count > 0);
  const std::string tip = kQueuesTip + (count > 0 ? "\r\nThese queues cannot be used:" + names : "");
  const int index = ui_->tabMain->indexOf(queuesPage_);
  ui_->tabMain->setTabToolTip(index, QString::fromStdString(tip));
  ui_->tabMain->tabBar()->setAccessibleTabName(
      index, count > 0 ? QString::fromStdString(std::string(kQueuesTab) + ". " + tip) : QString());
}

void frmMain::BindControls() {
  binding_.Bind(TextRow{ui_->txtSchedulerUsername, AdminKey::kSchedulerUsername});
  binding_.Bind(TextRow{ui_->txtSchedulerPassword, AdminKey::kSchedulerPassword});
  binding_.OnClick(ui_->btnSave, [this] { btnSave_Click(); });
  binding_.OnClick(ui_->btnCancel, [this] { btnCancel_Click(); });
  binding_.OnClick(ui_->btnExit, [this] { close(); });
  binding_.OnClick(ui_->btnHelp, [this] { btnHelp_Click(); });
  const auto addShortcut = [this](const QKeySequence& keys, QAbstractButton* button) {
    connect(new QShortcut(keys, this), &QShortcut::activated, button, &QAbstractButton::click);
  };
  addShortcut(QKeySequence(QKeySequence::Save), ui_->btnSave);
  addShortcut(QKeySequence(Qt::Key_F1), ui_->btnHelp);

  connect(&session_, &ConfigurationSession::edited, this, [this] {
    const bool hasChanges = session_.Document() != nullptr && session_.Document()->HasChanges();
    setWindowModified(hasChanges);
    if (hasChanges) tags_.ToggleSection("Main", true);  // what can be edited can be saved
    MarkUnusableQueues();
  });
  connect(&session_, &ConfigurationSession::validationFailed, this, &frmMain::ShowFaulty);
}

void frmMain::ShowFaulty(Section* faulty) {
  for (SectionPage* page : pages_) {
    if (page->Type() != faulty->SectionType) continue;
    ui_->tabMain->setCurrentWidget(page);
    page->ShowFaulty(*faulty);
  }
  if (faulty->SectionType == SectionType::Admin)
    binding_.FocusFirst(faulty->FaultySettings(), *ui_->txtSchedulerUsername);
}

void frmMain::BindProbes() {
  const auto onProbe = [this](SectionPage* page, auto test) {
    connect(page, &SectionPage::probeRequested, this,
            [this, test] { RunGuarded(components_.messages, test); });
  };
  onProbe(mailPage_, [this] { MailServerProbe(probes_).Run(); });
  onProbe(sqlPage_, [this] { SqlServerProbe(probes_, sqlPage_->Login()).Run(); });
  onProbe(queuesPage_, [this] { QueueProbe(probes_, sqlPage_->Login()).Run(); });
}

void frmMain::ShowSecurity(const std::string& note) {
  if (ui_->tabMain->currentWidget() == queuesPage_)
    queuesPage_->ShowSecurity(note);
  else
    sqlPage_->ShowSecurity(note);
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
