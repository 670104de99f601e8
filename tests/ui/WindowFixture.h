// The real main window over a service folder of its own, driven by keys and clicks that enter where the
// windowing system delivers them: a disabled or covered control gets none. Controls are found by name.
#pragma once

#include <gtest/gtest.h>

#include <QComboBox>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/FailingFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/RecordingMessages.h"
#include "ui/frmMain.h"

namespace pellorin::test {

using Names = std::vector<std::string>;
Names Words(const std::string& text);  // separated by blanks

class WindowFixture : public ::testing::Test, private MailComponent, EventLogRegistration, HelpViewer {
 protected:
  WindowFixture();
  ~WindowFixture() override;
  void TearDown() override;

  // Lays out Pellorin.ini, unless it is empty, makes the window and starts it.
  bool Start(const std::string& ini, const std::string& commandLine = {});
  std::string IniPath() const { return program + "/Pellorin.ini"; }
  std::string IniBytes() const { return folder.Read("Service/Pellorin.ini"); }
  void WriteIni(const std::string& bytes) const { folder.Write("Service/Pellorin.ini", bytes); }
  // What the service would read: a section of the saved file.
  std::string Stored(const std::string& section, const std::string& key) const;

  template <typename Control = QWidget>
  Control& Find(const std::string& name) const {
    auto* control = window->findChild<Control*>(QString::fromStdString(name));
    if (control == nullptr) throw std::runtime_error("no control " + name);
    return *control;
  }
  std::string Text(const std::string& name) const;    // of any control that shows a text
  std::string Texts(const std::string& names) const;  // joined by "|"
  bool IsOn(const std::string& name) const { return Find(name).isEnabled(); }
  std::string OnOf(const std::string& names) const;  // which of them are enabled
  std::string FocusName() const;
  std::string Page() const;  // caption of the tab in front
  Names Entries(const std::string& list) const;
  bool IsModified() const { return window->isWindowModified(); }

  void Click(const std::string& name) const;
  void ClickTab(int index) const;
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;  // in the window that has the focus
  void Type(const std::string& keys) const;
  void Replace(const std::string& name, const std::string& keys) const;  // click, select all, type
  void Paste(const std::string& name, const std::string& text) const;    // click, select all, paste
  void Choose(const std::string& list, int index) const;                 // through the opened list
  void SaveSuccessfully();
  void Add(const std::string& name);  // a mail server

  TemporaryFolder folder;
  std::string program = folder / "Service";
  FailingFiles files{SystemFiles()};
  RecordingMessages messages;
  std::string installFolder = program;
  Names log;  // what the event log and the help viewer were asked
  std::function<void()> onRegister, onHelp;
  std::unique_ptr<frmMain> window;

 private:
  std::string InstallFolder() override { return installFolder; }
  void RegisterSource(const std::string& messageFile, const std::string& reserved, const std::string& path,
                      const std::string& source, const std::string& logName) override;
  void ShowTopic(QWidget& owner, const std::string& file, const std::string& topic) override;
};

std::string Replaced(std::string text, const std::string& from, const std::string& to);  // the first one

inline const std::string kQueueXml = "<?xml version=\"1.0\"?>\n<queue title=\"t\"/>\n";
inline const std::string kMailOne =
    "[MAIL:one]\r\nSendMethod=2\r\nRemoteServerName=one.example\r\nRemoteServerPort=25\r\n"
    "AuthenticationMethod=0\r\nSenderEmail=a@one\r\nConnectionTimeout=30\r\n";
inline const std::string kMailTwo =
    "[MAIL:two]\r\n; by hand\r\nSendMethod=2\r\nRemoteServerName=two.example\r\nRemoteServerPort=587\r\n"
    "AuthenticationMethod=2\r\nUsername=DOM\\bob\r\nSenderEmail=a@two\r\nDefaultDomain=two\r\n"
    "ConnectionTimeout=0\r\n";
inline const std::string kSql = "[SQL:DB1]\r\nPrimaryMailServer=one\r\n";
inline const Message kSaved{.text = "Settings Saved", .title = "Settings", .icon = MessageIcon::Information};
inline const std::string kAdmin = "[ADMIN:Pellorin]\r\nSchedulerUsername=sched\r\n";
inline const std::string kUsual = kMailOne + kMailTwo + kSql + kAdmin;

}  // namespace pellorin::test
