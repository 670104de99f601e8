// The main window: a common area (scheduler account, Save, Cancel, Exit, Help) and a tab strip of three
// pages. Checks that it runs in the folder of the service, loads and saves the configuration, and asks before
// changes are lost. Each page edits its own sections.
#pragma once

#include <QCloseEvent>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "ui/Components.h"
#include "ui/boxes/GuardedEvents.h"
#include "ui/controls/ControlTags.h"
#include "ui/pages/ConfigurationSession.h"
#include "ui/pages/PageTabs.h"
#include "ui/pages/SettingsForm.h"
#include "ui/probes/Probe.h"

namespace Ui {
class frmMain;
}

namespace pellorin {

class MailPage;
class QueuesPage;
class SectionPage;
class SqlPage;

inline constexpr const char* kMailTab = "Mail Servers";
inline constexpr const char* kSqlTab = "Sql Servers";
inline constexpr const char* kQueuesTab = "Queues";

class frmMain : public QWidget {
  Q_OBJECT

 public:
  explicit frmMain(const Components& components);
  ~frmMain() override;

  // Starts up with this command line, as IsInstallMode reads it. Shows the window. False when the program
  // must end instead, after a box that says why.
  bool Form_Load(const std::string& commandLine);
  // Loads the document afresh and fills the window. Raises what Ini::Load raises.
  void StartUp();
  void StartBrandNew(std::string_view sectionKind);
  void MakeTabVisible(const std::string& caption) { tabs_.MakeVisible(caption); }
  void ShowInfo(const std::string& message);
  void ShowHelpTopic(QWidget& owner, const std::string& topic);
  void ShowHelpPage(QWidget& owner, const std::string& pageName);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void AddPages();
  void LeadTabThroughPagesFirst();
  void BindControls();
  void BindSession();
  void BindProbes();
  void ShowFaulty(Section* faulty);
  void ShowSecurity(const std::string& note);
  void StackCommonAreaOnNarrowScreen();
  void EnterInstallMode();
  void OpenInstallHelp();
  void FillSelectors();
  void ShowLoaded();
  void ShowNewInstallation();
  void ShowNothingLoaded();

  void btnSave_Click();
  void btnCancel_Click();
  void btnHelp_Click();

  Components components_;
  std::vector<std::string> addresses_;  // of test e-mails in this run
  ProbeServices probes_;
  std::unique_ptr<Ui::frmMain> ui_;
  ConfigurationSession session_;
  ControlTags controlTags_;
  GuardedEvents events_;
  SettingsForm scheduler_;
  PageTabs tabs_;
  MailPage* mailPage_ = nullptr;  // the pages belong to the tab strip
  SqlPage* sqlPage_ = nullptr;
  QueuesPage* queuesPage_ = nullptr;
  std::vector<SectionPage*> pages_;
  bool installMode_ = false;
};

}  // namespace pellorin
