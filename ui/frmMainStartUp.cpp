// Start-up of the main window: the checks before it shows, loading the document, filling the pages.
#include <cstdio>

#include "config/SettingKeys.h"
#include "files/FileLookup.h"
#include "ui/boxes/FailureMessage.h"
#include "ui/frmMain.h"
#include "ui/mail/MailPage.h"
#include "ui/queues/QueuesPage.h"
#include "ui/sql/SqlPage.h"
#include "ui_frmMain.h"

namespace pellorin {

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
  if (SameFolder(components_.files, components_.programFolder, folder)) return true;
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
  sqlPage_->LoadLists();
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
  MarkUnusableQueues();
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
  FillScheduler();  // a file may hold the scheduler's account and nothing else
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
  ShowValue(*ui_->txtSchedulerUsername, admin, AdminKey::kSchedulerUsername);
  ShowValue(*ui_->txtSchedulerPassword, admin, AdminKey::kSchedulerPassword);
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

}  // namespace pellorin
