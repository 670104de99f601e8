// The real main window over a service folder of its own, driven by keys and clicks that enter where the
// windowing system delivers them: a disabled or covered control gets none. Controls are found by name.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QListWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <functional>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "sql/OdbcConnection.h"
#include "tests/support/RecordingMessages.h"
#include "tests/support/TemporaryFolder.h"
#include "ui/frmMain.h"

namespace pellorin::test {

inline const std::string kQueueXml = "<?xml version=\"1.0\"?>\n<queue title=\"t\"/>\n";
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

using Names = std::vector<std::string>;

inline Names Words(const std::string& text) {  // separated by blanks
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

inline std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t position = text.find(from);
  if (position == std::string::npos) throw std::runtime_error("not there: " + from);
  return text.replace(position, from.size(), to);
}

// An installer that does as the test says and remembers what it was asked.
class FakeSetup : public ProcedureSetup {
 public:
  std::optional<std::vector<std::string>> ListDatabases(const SqlLogin& login) override {
    asked.push_back("list " + Text(login));
    return databases;
  }
  bool Install(const SqlLogin& login, const Installation& installation) override {
    asked.push_back("install " + Text(login) + " " + installation.database +
                    (installation.grantsToAll ? " all" : "") +
                    (installation.allowsTempTables ? " temp" : ""));
    return succeeds;
  }

  std::vector<std::string> databases = {"master", "sales"};
  bool succeeds = true;
  std::vector<std::string> asked;

 private:
  static std::string Text(const SqlLogin& login) {
    return login.server + (login.isTrusted ? "" : " " + login.user + "/" + login.password);
  }
};

class WindowFixture : public ::testing::Test, private MailComponent, EventLogRegistration, HelpViewer {
 protected:
  WindowFixture() { folder.Write("Service/QUEUEDefinitions/defaultQUEUE.xml", kQueueXml); }
  void TearDown() override { messages.ExpectNoMore(); }

  // Lays out Pellorin.ini, unless it is empty, makes the window and starts it.
  bool Start(const std::string& ini, const std::string& commandLine = {}) {
    if (!ini.empty()) WriteIni(ini);
    window = std::make_unique<frmMain>(Components{
        SystemFiles(), *boxes, *this, *this, *this, setup, [] { return std::make_unique<OdbcConnection>(); },
        [this] { return localInstances; }, program, LocaleConventions()});
    if (!window->Form_Load(commandLine)) return false;
    window->activateWindow();
    return QTest::qWaitForWindowActive(window.get());
  }
  std::string IniPath() const { return program + "/Pellorin.ini"; }
  std::string IniBytes() const { return folder.Read("Service/Pellorin.ini"); }
  void WriteIni(const std::string& bytes) const { folder.Write("Service/Pellorin.ini", bytes); }
  // What the service would read: a section of the saved file.
  std::string Stored(const std::string& section, const std::string& key) const {
    Ini document(SystemFiles(), program, LocaleConventions());
    document.Load("Pellorin.ini");
    const Section* found = document.GetSection(section);
    return found == nullptr ? "no section " + section : found->GetValue(key);
  }

  template <typename Control = QWidget>
  Control& Find(const std::string& name) const {
    auto* control = window->findChild<Control*>(QString::fromStdString(name));
    if (control == nullptr) throw std::runtime_error("no control " + name);
    return *control;
  }
  std::string Text(const std::string& name) const {  // of any control that shows a text
    const QVariant text = Find(name).property("text");
    return (text.isValid() ? text.toString() : Find<QComboBox>(name).currentText()).toStdString();
  }
  std::string Texts(const std::string& names) const {
    QStringList texts;
    for (const std::string& name : Words(names)) texts += QString::fromStdString(Text(name));
    return texts.join(QLatin1Char('|')).toStdString();
  }
  bool IsOn(const std::string& name) const { return Find(name).isEnabled(); }
  std::string OnOf(const std::string& names) const {  // which of them are enabled
    std::string on;
    for (const std::string& name : Words(names))
      if (IsOn(name)) on += (on.empty() ? "" : " ") + name;
    return on;
  }
  std::string FocusName() const {
    const QWidget* focus = QApplication::focusWidget();
    return focus == nullptr ? "none" : focus->objectName().toStdString();
  }
  std::string Page() const {  // caption of the tab in front
    const auto& tabs = Find<QTabWidget>("tabMain");
    return tabs.tabText(tabs.currentIndex()).toStdString();
  }
  Names Entries(const std::string& list) const {
    const auto& box = Find<QComboBox>(list);
    Names entries;
    for (int index = 0; index < box.count(); ++index) entries.push_back(box.itemText(index).toStdString());
    return entries;
  }
  bool IsModified() const { return window->isWindowModified(); }

  void Click(const std::string& name) const {
    const QWidget& control = Find(name);
    ASSERT_TRUE(control.isVisible()) << name;
    const QPoint place(std::min(10, control.width() / 2), control.height() / 2);  // options: on the button
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, control.mapTo(window.get(), place));
  }
  void ClickTab(int index) const {
    const QTabBar& bar = *Find<QTabWidget>("tabMain").tabBar();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                      bar.mapTo(window.get(), bar.tabRect(index).center()));
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
    QTest::keyClick(window->windowHandle(), key, modifiers);
  }
  void Type(const std::string& keys) const {
    for (const char key : keys) QTest::keyClick(window->windowHandle(), key);
  }
  void Replace(const std::string& name, const std::string& keys) const {
    Click(name);
    ASSERT_EQ(FocusName(), name);
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_Delete);
    Type(keys);
  }
  void Paste(const std::string& name, const std::string& text) const {
    QApplication::clipboard()->setText(QString::fromStdString(text));
    Click(name);
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_V, Qt::ControlModifier);
  }
  void Choose(const std::string& list, int index) const {  // through the opened list
    auto& box = Find<QComboBox>(list);
    ASSERT_TRUE(box.isVisible() && box.isEnabled()) << list;
    box.setFocus();
    Press(Qt::Key_F4);
    ASSERT_TRUE(box.view()->isVisible());
    QTest::keyClick(box.view(), Qt::Key_Home);
    for (int step = 0; step < index; ++step) QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
  }
  void Save(const Message& box) {
    messages.WillShow(box);
    Click("btnSave");
  }
  void SaveSuccessfully() {
    Save({.text = "Settings Saved", .title = "Settings", .icon = MessageIcon::Information});
    EXPECT_FALSE(IsModified());
  }
  Message SaveFailure(const std::string& section, const std::string& reason, const std::string& saved,
                      const std::string& unsaved) const {
    return Critical("Could not save section " + section + "\r\n" + reason + "\r\n" + IniPath() +
                    "\r\n\r\nSaved: " + saved + "\r\nNot saved: " + unsaved +
                    "\r\n\r\nError Number: 50111\r\nError Source: PellorinConfig.exe, Section, Save");
  }
  void Add(const std::string& name) {  // a mail server
    messages.WillAsk("New Mail Server", "Please enter the name of the new mail server", name);
    Click("btnAddNewMailServer");
  }

  void AddQueue(const std::string& name) {
    messages.WillAsk("New Queue", "Please enter the name of the new queue", name);
    Click("btnAddQueue");
  }
  std::string Checked(const std::string& names) const {
    std::string checked;
    for (const std::string& name : Words(names))
      if (Find<QAbstractButton>(name).isChecked()) checked += (checked.empty() ? "" : " ") + name;
    return checked;
  }
  std::string Lines(const std::string& list, bool onlySelected = false) const {
    const auto& box = Find<QListWidget>(list);
    std::string lines;
    for (int row = 0; row < box.count(); ++row)
      if (!onlySelected || box.item(row)->isSelected())
        lines += (lines.empty() ? "" : "|") + box.item(row)->text().toStdString();
    return lines;
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
  std::string installFolder = program;
  FakeSetup setup;
  std::vector<MailArguments> sent;
  bool accepts = true;  // the mail component does
  std::string mailError;
  std::function<void(const Watch& watch)> onSend;
  Names localInstances = {"HOST1", "HOST1\\SALES", ""};
  Names log;  // what the event log and the help viewer were asked
  std::function<void()> onRegister, onHelp;
  std::unique_ptr<frmMain> window;

 private:
  std::string InstallFolder() override { return installFolder; }
  std::string Version() override { return "7.8.9"; }
  void SetWatch(Watch watch) override { watch_ = std::move(watch); }
  bool Send(const MailArguments& arguments) override {
    sent.push_back(arguments);
    if (onSend) onSend(watch_);
    return accepts;
  }
  int LastErrorNumber() override { return 535; }
  std::string LastErrorSource() override { return "source"; }
  std::string LastErrorDescription() override { return mailError; }
  void RegisterSource(const std::string& messageFile, const std::string& reserved, const std::string& path,
                      const std::string& source, const std::string& logName) override {
    log.push_back(messageFile + "|" + reserved + "|" + path + "|" + source + "|" + logName);
    if (onRegister) onRegister();
  }
  void ShowTopic(QWidget& owner, const std::string& file, const std::string& topic) override {
    EXPECT_EQ(&owner, window.get());
    log.push_back(file + "|" + topic);
    if (onHelp) onHelp();
  }

  Watch watch_;
};

}  // namespace pellorin::test
