// The main window: a common area (scheduler account, Save, Cancel, Exit, Help) and a tab strip of three
// pages. Checks that it runs from the service's folder, loads the configuration, saves it, and asks before
// changes are lost. What a page edits is the page's business.
#pragma once

#include <QCloseEvent>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <string>

#include "platform/SystemLocale.h"
#include "service/EventLogRegistration.h"
#include "service/MailComponent.h"
#include "sql/ProcedureInstaller.h"
#include "ui/boxes/HelpViewer.h"
#include "ui/controls/ControlTags.h"
#include "ui/pages/ConfigurationSession.h"
#include "ui/pages/ControlBinding.h"
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

// What the window works with; chosen by main.
struct Components {
  FileOperations& files;
  UserMessages& messages;
  MailComponent& mail;
  EventLogRegistration& eventLog;
  HelpViewer& help;
  ProcedureSetup& setup;
  SqlConnectionFactory connect;
  std::function<std::vector<std::string>()> localInstances;  // of SQL Server, on this machine
  std::string programFolder;                                 // full path
  LocaleConventions locale;
};

class frmMain : public QWidget {
  Q_OBJECT

 public:
  explicit frmMain(const Components& components);
  ~frmMain() override;

  // Start-up. The command line's elements are separated by ","; one that contains "InstallMode" sets install
  // mode. Shows the window; false when the program must end instead, after the box that says why.
  bool Form_Load(const std::string& commandLine);
  // Loads the document afresh and fills the window. Raises what Ini::Load raises.
  void StartUp();
  void StartBrandNew(std::string_view sectionKind);
  void MakeTabVisible(const std::string& caption);
  void ShowInfo(const std::string& message);
  void ShowHelpTopic(QWidget& owner, const std::string& topic);
  void ShowHelpPage(QWidget& owner, const std::string& pageName);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void AddPages();
  void BindControls();
  void BindProbes();
  void ShowFaulty(Section* faulty);
  void ShowSecurity(const std::string& note);
  bool IsInServiceFolder();
  void ReadCommandLine(const std::string& commandLine);
  void RegisterEventSources();
  void OpenInstallHelp();
  void FillSelectors();
  void ShowLoaded();
  void ShowNewInstallation();
  void ShowNothingLoaded();
  void FillScheduler();
  void ReportUnreadNames();
  void MarkUnusableQueues();
  void MarkTab(const QWidget& page, bool hasNotice);
  bool MayClose();
  bool ConfirmIncomplete(const char* title, const char* servers);

  void btnSave_Click();
  void btnCancel_Click();
  void btnHelp_Click();

  Components components_;
  ProbeServices probes_;
  std::unique_ptr<Ui::frmMain> ui_;
  ConfigurationSession session_;
  ControlTags tags_;
  ControlBinding binding_;
  MailPage* mailPage_ = nullptr;  // the pages belong to the tab strip
  SqlPage* sqlPage_ = nullptr;
  QueuesPage* queuesPage_ = nullptr;
  std::array<SectionPage*, 3> pages_{};
  std::string unusableQueues_;  // as the tip of their tab names them
  bool installMode_ = false;
};

}  // namespace pellorin
