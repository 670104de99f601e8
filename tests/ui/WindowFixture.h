// The real main window over a service folder of its own, used by keys and clicks.
#pragma once

#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <functional>
#include <memory>

#include "sql/OdbcConnection.h"
#include "tests/support/RecordingMessages.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/FakeSetup.h"
#include "tests/ui/WindowUser.h"
#include "ui/frmMain.h"

namespace pellorin::test {

inline const std::string kQueueXml = "<?xml version=\"1.0\"?>\n<queue title=\"t\"/>\n";
// Complete, so that showing it changes nothing.
inline const std::string kDailyQueue =
    "<queue title=\"t\" frequency=\"daily\" every=\"1\" occurstype=\"once\" occursonce=\"23:05\" "
    "occursevery=\"1\" span=\"Hour(s)\" starttime=\"12:00 AM\" startdate=\"11/22/2026\" "
    "endtime=\"11:59:59 PM\" enddate=\"11/22/2926\" hasenddate=\"0\" queuebydefault=\"none\" "
    "queuebydefaultservers=\"\"/>";
inline const std::string kMailOne =
    "[MAIL:one]\r\nSendMethod=2\r\nRemoteServerName=one.example\r\nRemoteServerPort=25\r\n"
    "AuthenticationMethod=0\r\nSenderEmail=a@one\r\nConnectionTimeout=30\r\n";
inline const std::string kMailTwo =
    "[MAIL:two]\r\n; by hand\r\nSendMethod=2\r\nRemoteServerName=two.example\r\nRemoteServerPort=587\r\n"
    "AuthenticationMethod=2\r\nUsername=DOM\\bob\r\nSenderEmail=a@two\r\nDefaultDomain=two\r\n"
    "ConnectionTimeout=0\r\n";
inline const std::string kSql = "[SQL:DB1]\r\nDefaultFormat=Text\r\nPrimaryMailServer=one\r\n";
inline const std::string kAdmin = "[ADMIN:Pellorin]\r\nSchedulerUsername=sched\r\n";
inline const std::string kUsual = kMailOne + kMailTwo + kSql + kAdmin;

inline std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t position = text.find(from);
  if (position == std::string::npos) throw std::runtime_error("not there: " + from);
  return text.replace(position, from.size(), to);
}

class WindowFixture : public ::testing::Test,
                      protected WindowUser,
                      private MailComponent,
                      EventLogRegistration,
                      HelpViewer {
 protected:
  WindowFixture() { WriteQueue("defaultQUEUE", kQueueXml); }
  void TearDown() override { messages.ExpectNoMore(); }

  // Lays out Pellorin.ini, unless it is empty, makes the window and starts it.
  bool Start(const std::string& ini, const std::string& commandLine = {}) {
    if (!ini.empty()) WriteIni(ini);
    window = std::make_unique<frmMain>(Components{SystemFiles(), *boxes, *mailComponent, *this, *this, setup,
                                                  [this] { return connect(); },
                                                  [this] { return localInstances; }, program, locale});
    if (!window->Form_Load(commandLine)) return false;
    window->activateWindow();
    return QTest::qWaitForWindowActive(window.get());
  }
  std::string IniPath() const { return program + "/Pellorin.ini"; }
  std::string IniBytes() const { return folder.Read("Service/Pellorin.ini"); }
  void WriteIni(const std::string& bytes) const { folder.Write("Service/Pellorin.ini", bytes); }
  std::string QueuePath(const std::string& name) const {
    return program + "/QUEUEDefinitions/" + name + ".xml";
  }
  std::string QueueFile(const std::string& name) const {
    return folder.Read("Service/QUEUEDefinitions/" + name + ".xml");
  }
  void WriteQueue(const std::string& name, const std::string& xml) const {
    folder.Write("Service/QUEUEDefinitions/" + name + ".xml", xml);
  }
  // What the service would read of a section of the saved files.
  std::string Stored(const std::string& section, const std::string& keys) const {
    Ini document(SystemFiles(), program, LocaleConventions());
    document.Load("Pellorin.ini");
    const Section* found = document.GetSection(section);
    if (found == nullptr) return "no section " + section;
    Names values;
    for (const std::string& key : Words(keys)) values.push_back(found->GetValue(key));
    return Joined(values, "|");
  }
  std::string Page() const {  // caption of the tab in front
    const auto& tabs = Find<QTabWidget>("tabMain");
    return tabs.tabText(tabs.currentIndex()).toStdString();
  }
  void ClickTab(int index) const {
    const QTabBar& bar = *Find<QTabWidget>("tabMain").tabBar();
    ClickAt(bar.mapTo(window.get(), bar.tabRect(index).center()));
  }
  bool IsModified() const { return window->isWindowModified(); }

  void Save(const Message& box) {
    messages.WillShow(box);
    Click("btnSave");
  }
  void SaveSuccessfully() {
    Save({.text = "Settings Saved", .title = "Settings", .icon = MessageIcon::Information});
    EXPECT_FALSE(IsModified());
  }
  static Message Invalid(const Names& sections) {  // "MAIL:one\r\n- error" of each
    std::string errors;
    for (const std::string& section : sections) errors += "\r\n" + section + "\r\n\r\n";
    return Warning("Validation Errors", "Please correct the following errors: \r\n" + errors);
  }
  static Message Faulty(const std::string& shown, const std::string& error) {  // cannot be left
    return Warning("Validation Errors",
                   "Settings for " + shown + " need to be corrected: \r\n- " + error + "\r\n");
  }
  Message SaveFailure(const std::string& section, const std::string& reason, const std::string& saved,
                      const std::string& unsaved, const std::string& path) const {
    return Critical("Could not save section " + section + "\r\n" + reason + "\r\n" + path +
                    "\r\n\r\nSaved: " + saved + "\r\nNot saved: " + unsaved +
                    "\r\n\r\nError Number: 50111\r\nError Source: PellorinConfig.exe, Section, Save");
  }
  // Adds a mail server, or a queue.
  void Add(const std::string& name, const std::optional<Message>& refusal = {}) {
    messages.WillAsk("New Mail Server", "Please enter the name of the new mail server", name);
    if (refusal) messages.WillShow(*refusal);
    Click("btnAddNewMailServer");
  }
  void AddQueue(const std::string& name, const std::optional<Message>& refusal = {}) {
    messages.WillAsk("New Queue", "Please enter the name of the new queue", name);
    if (refusal) messages.WillShow(*refusal);
    Click("btnAddQueue");
  }
  // Presses a button Delete; `what` it asks about: "settings for server x" or "queue x".
  void Delete(const std::string& button, const std::string& what, Answer answer = Answer::Yes) {
    messages.WillShow(
        Question("Delete Section", "Do you want to delete " + what + "?", MessageButtons::YesNo), answer);
    Click(button);
  }
  // What the user does in a dialog once it is open.
  void InDialog(std::function<void(QDialog&)> user) {
    auto* timer = new QTimer(window.get());
    QObject::connect(timer, &QTimer::timeout, timer, [timer, user = std::move(user)] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isActiveWindow()) return;
      timer->deleteLater();
      timer->stop();
      user(*dialog);
    });
    timer->start(1);
  }

  TemporaryFolder folder;
  std::string program = folder / "Service";
  RecordingMessages messages;
  UserMessages* boxes = &messages;  // whom the window talks to
  MailComponent* mailComponent = this;
  SqlConnectionFactory connect = [] { return std::make_unique<OdbcConnection>(SystemFiles()); };
  std::string installFolder = program;
  FakeSetup setup;
  LocaleConventions locale;
  std::vector<MailArguments> sent;
  bool accepts = true;  // the mail component does
  std::string mailError;
  std::vector<ConversationLine> conversation;
  std::function<void(const Watch& watch)> onSend;
  Names localInstances = {"HOST1", "HOST1\\SALES", ""};
  Names log;  // what the event log and the help viewer were asked
  std::function<void()> onRegister, onHelp;
  std::unique_ptr<frmMain> window;

 private:
  QWidget& Used() const override { return *window; }
  std::string InstallFolder() override { return installFolder; }
  std::string Version() override { return "7.8.9"; }
  void SetWatch(Watch watch) override { watch_ = std::move(watch); }
  bool Send(const MailArguments& arguments) override {
    sent.push_back(arguments);
    if (onSend) onSend(watch_);
    return accepts;
  }
  std::vector<ConversationLine> LastConversation() override { return conversation; }
  int LastErrorNumber() override { return 535; }
  std::string LastErrorSource() override { return "source"; }
  std::string LastErrorDescription() override { return mailError; }
  void RegisterSource(const std::string& messageFile, const std::string& reserved, const std::string& path,
                      const std::string& source, const std::string& logName) override {
    log.push_back(messageFile + "|" + reserved + "|" + path + "|" + source + "|" + logName);
    if (onRegister) onRegister();
  }
  void ShowTopic(QWidget& owner, const std::string& file, const std::string& topic) override {
    const QWidget* dialog = QApplication::activeModalWidget();
    EXPECT_EQ(&owner, dialog != nullptr ? dialog : window.get());
    log.push_back(file + "|" + topic);
    if (onHelp) onHelp();
  }

  Watch watch_;
};

}  // namespace pellorin::test
