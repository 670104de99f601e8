// The dialog that installs sp_sendPLN, driven by keys and clicks over the real engine and driver.
#include <QPlainTextEdit>
#include <filesystem>

#include "sql/InstallScript.h"
#include "tests/sql/SqlServerFixture.h"
#include "tests/support/RecordingMessages.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/WindowUser.h"
#include "ui/dialogs/frmNewSqlServer.h"

namespace pellorin::test {
namespace {

const std::string kScript =
    "CREATE PROCEDURE sp_sendPLN AS\r\n--sqlstart\r\nSELECT 1\r\n--sqlend\r\nSELECT 2";

// A connection that gives up soon, whatever the engine grants it.
class HastyConnection : public OdbcConnection {
 public:
  HastyConnection() : OdbcConnection(SystemFiles()) {}
  void Open() override {
    ConnectionTimeout = std::chrono::seconds(1);
    OdbcConnection::Open();
  }
};

class NewSqlServerTest : public SqlServerTest, protected WindowUser {
 protected:
  NewSqlServerTest() { folder.Write(kInstallScript, kScript); }
  void TearDown() override {
    dialog.reset();
    SqlServerTest::TearDown();
    messages.ExpectNoMore();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  }

  void Make() {
    dialog = std::make_unique<frmNewSqlServer>(
        nullptr,
        InstallerServices{installer, messages, SystemFiles(), [this] { return instances; }, folder.Path(),
                          [this](QWidget& owner) { helped += &owner == dialog.get() ? 1 : 0; }});
  }
  void Show() {
    dialog->setModal(true);
    dialog->show();
    dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
  }
  void MakeAndLogIn() {  // as the user does it, up to the database, with whole lines copied from elsewhere
    Make();
    Show();
    Paste("ddcSqlServers", server + "\r\n");
    Click("optSqlNative");
    EXPECT_EQ(FocusName(), "txtSqlUsername");
    Paste("txtSqlUsername", user + "\n");
    Paste("txtSqlPassword", password + "\n");
  }
  void Lock(const std::string& instance, const std::string& inDatabase) {  // one that is configured already
    dialog->SetServer(instance);
    dialog->SetIsServerReadOnly(true);
    dialog->SetDatabase(inDatabase);
    dialog->SetAuthenticationType("sql");
    dialog->SetUsername(user);
    dialog->SetPassword(password);
  }
  bool OffersDatabase() {
    const Names entries = Entries("cmbDatabase");
    return std::count(entries.begin(), entries.end(), Database()) == 1;
  }
  void ExpectUsable() {
    messages.ExpectNoMore();
    EXPECT_TRUE(dialog->isVisible() && dialog->isEnabled() && !dialog->Configured());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  }
  // All that a user can press, and closing, while the program does not look.
  void PressEverything(const std::string& button) {
    const auto post = [this](QEvent* event) { QCoreApplication::postEvent(dialog->windowHandle(), event); };
    for (const QPointF place : {PlaceOf(button), PlaceOf("btnCancel")})
      for (const auto& [type, held] :
           {std::pair(QEvent::MouseButtonPress, Qt::LeftButton), {QEvent::MouseButtonRelease, Qt::NoButton}})
        post(new QMouseEvent(type, place, place, Qt::LeftButton, held, {}));
    for (const auto& [key, text] : {std::pair(Qt::Key_X, "x"), {Qt::Key_Return, "\r"}, {Qt::Key_Escape, ""}})
      for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
        post(new QKeyEvent(type, key, {}, QString::fromLatin1(text)));
    QCoreApplication::postEvent(dialog.get(), new QCloseEvent);
  }
  void ExpectScriptViewAndCloseIt() {
    QDialog* view = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] {
      view = dialog->findChild<QDialog*>(QStringLiteral("frmScriptView"));
      return view != nullptr && view->isVisible();
    }));
    auto* text = view->findChild<QPlainTextEdit*>();
    EXPECT_EQ(text->toPlainText().replace(QLatin1Char('\n'), QStringLiteral("\r\n")).toStdString(), kScript);
    EXPECT_TRUE(text->isReadOnly());
    QTest::keyClick(view, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  TemporaryFolder folder;
  RecordingMessages messages;
  int connections = 0;
  std::function<void()> onConnect;
  ProcedureInstaller installer{[this] {
                                 ++connections;
                                 if (onConnect) onConnect();
                                 return std::make_unique<HastyConnection>();
                               },
                               SystemFiles(), folder.Path(), messages};
  Names instances;
  int helped = 0;
  std::unique_ptr<frmNewSqlServer> dialog;

 private:
  QWidget& Used() const override { return *dialog; }
};

TEST_F(NewSqlServerTest, OpensAsToldAndFollowsTheKeyboard) {
  const std::string fields = "ddcSqlServers txtSqlUsername txtSqlPassword";
  instances = {"", "HOST1", "HOST1\\SALES", ""};
  Make();
  EXPECT_EQ(Entries("ddcSqlServers"), Names({"HOST1", "HOST1\\SALES"}));
  EXPECT_EQ(dialog->Server() + " " + dialog->AuthenticationType() + " " + OnOf(fields),
            "HOST1 Trusted ddcSqlServers");
  Lock("no such host", "a 'b' [c]");
  Show();
  EXPECT_EQ(Text(fields + " cmbDatabase"), "no such host|" + user + "|" + password + "|a 'b' [c]");
  EXPECT_EQ(OnOf(fields), "txtSqlUsername txtSqlPassword");
  EXPECT_EQ(Text("lblLoginNotice"),
            "These credentials are for this installation only: the service's own stay as they are.");
  const QColor paper = Find("txtSqlUsername").palette().color(QPalette::Base);
  EXPECT_EQ(dialog->AuthenticationType() + FocusName(), "SqloptSqlNative");
  Press(Qt::Key_Up);
  EXPECT_EQ(dialog->AuthenticationType() + FocusName(), "TrustedoptTrusted");
  EXPECT_NE(Find("txtSqlUsername").palette().color(QPalette::Base), paper);
  Click("btnHelp");
  Press(Qt::Key_F1);
  EXPECT_EQ(helped, 2);
  ExpectUsable();
}

TEST_F(NewSqlServerTest, ListsTheDatabasesForTheUser) {
  Database();
  MakeAndLogIn();
  Press(Qt::Key_Tab);
  EXPECT_EQ(dialog->Database() + "|" + FocusName(), "master|cmbDatabase");
  EXPECT_TRUE(OffersDatabase());
  EXPECT_TRUE(Text("lblConnectionNotice").starts_with("The connection to " + server + " was "));
  EXPECT_TRUE(Find("lblConnectionNotice").isVisible());
  for (const std::string typed : {"", "not [there]"}) {
    Paste("cmbDatabase", typed);
    Click("btnRefresh");
    EXPECT_EQ(dialog->Database(), typed.empty() ? "master" : typed);
    EXPECT_TRUE(OffersDatabase());
  }
  // Another instance has other databases; what the user typed for it stays.
  Paste("ddcSqlServers", server + "x");
  EXPECT_EQ(dialog->Database(), "not [there]");
  EXPECT_TRUE(Entries("cmbDatabase").empty());
  EXPECT_FALSE(Find("lblConnectionNotice").isVisible());
  Paste("ddcSqlServers", server);
  const int before = connections;
  Find("cmbDatabase").setFocus();  // not by the user
  EXPECT_TRUE(Entries("cmbDatabase").empty());
  Press("Tab Shift+Tab");
  EXPECT_TRUE(OffersDatabase());
  EXPECT_EQ(dialog->Database(), "not [there]");
  EXPECT_EQ(connections, before + 1);
  // One click on its arrow loads the list and opens it.
  Paste("ddcSqlServers", server + " ");
  Paste("ddcSqlServers", server);
  const auto& list = Find<QComboBox>("cmbDatabase");
  ClickAt(list.mapTo(dialog.get(), QPoint(list.width() - 8, list.height() / 2)));
  EXPECT_TRUE(OffersDatabase() && list.view()->isVisible());
}

TEST_F(NewSqlServerTest, AFailedListComesBackOnlyWhenAskedFor) {
  struct Row {
    std::string password;
    std::string title = "Connection Error";
    int step = 0;
    Hook hook = {};
  };
  std::vector<Row> rows{{"wrong"}, {""}};
  if (tds) {
    rows.push_back({password, "Connection Error", 1, Hook::Silent()});
    rows.push_back(
        {password, "SQL Error", kOpening + 1, Hook::Error(229, "The SELECT permission was denied.")});
  }
  MakeAndLogIn();
  for (const Row& row : rows) {
    Paste("txtSqlPassword", row.password);
    if (row.step > 0) tds->AtStep(tds->Steps() + row.step, row.hook);
    messages.WillShowSome();
    Press(Qt::Key_Tab);
    EXPECT_EQ(messages.Last().title, row.title) << row.step;
    EXPECT_EQ(dialog->Database() + "|" + FocusName(), "|cmbDatabase");
    ExpectUsable();
    if (tds) {
      EXPECT_EQ(dialog->SecurityNote().empty(), row.step == 1) << "the password was sent: " << row.step;
    }
    Press("Shift+Tab Tab");  // shows no box again
    Paste("txtSqlPassword", "other");
    EXPECT_EQ(dialog->SecurityNote(), "");
  }
  Paste("txtSqlPassword", password);
  Click("btnRefresh");
  EXPECT_EQ(dialog->Database(), "master");
}

TEST_F(NewSqlServerTest, RefusesBeforeItConnects) {
  const Message missing =
      Warning("Missing Information",
              "Please provide a server name and a database name for the installation to proceed");
  const Message duplicate = Warning("Duplicate Entry", "A server with this name already configured");
  const Message blank = Warning("Invalid Name", "A name cannot begin or end with a blank.");
  const Message sign =
      Warning("Invalid Name",
              "A name cannot hold a colon, a closing bracket, a vertical bar or a control character.");
  Make();
  dialog->SetExistingServers({"HOST1\\Sales", "TCP:ODD"});
  Show();
  for (const auto& [name, inDatabase, box] : {std::tuple("", "master", missing),
                                              {"HOST2", "", missing},
                                              {"host1\\SALES", "m", duplicate},
                                              {"tcp:odd", "m", duplicate},
                                              {"HOST2", "m ", blank},
                                              {"tcp:HOST2", "m", sign},
                                              {"HOST2]", "m", sign}}) {
    SCOPED_TRACE(name);
    Paste("ddcSqlServers", name);
    Paste("cmbDatabase", inDatabase);
    messages.WillShow(box);
    Press(Qt::Key_Return);
    ExpectUsable();
  }
  messages.WillShow(sign);
  Click("btnRefresh");
  EXPECT_EQ(connections, 0);
  Lock("tcp:" + server, "");  // an instance that is configured already is never refused for its name
  Click("btnRefresh");
  EXPECT_EQ(dialog->Database(), "master");
}

TEST_F(NewSqlServerTest, InstallsAndUpdates) {
  MakeAndLogIn();
  Press("Tab Ctrl+A");
  Type(Database());
  EXPECT_EQ(dialog->Database(), Database());
  Press(Qt::Key_Return);
  EXPECT_TRUE(dialog->Configured());
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(Procedure(), kScript);
  EXPECT_FALSE(IsGranted());

  Make();
  Lock(server, Database());
  Show();
  Click("optAllUsers chkAllowTempTables");
  Press("Alt+S");
  EXPECT_TRUE(QTest::qWaitFor([this] { return dialog->Configured(); }));  // a mnemonic clicks after a moment
  EXPECT_TRUE(IsGranted());
  EXPECT_NE(Procedure().find("/* --sqlstart\r\nSELECT 1\r\n--sqlend */"), std::string::npos) << Procedure();
}

TEST_F(NewSqlServerTest, StaysUsableWhenTheCommitIsNotAnswered) {
  if (IsReal()) GTEST_SKIP() << "needs a server that fails on demand";
  MakeAndLogIn();
  Paste("cmbDatabase", Database());
  tds->AtStep(tds->Steps() + kOpening + 5, Hook::Drop());
  messages.WillShow(Warning("SQL Error",
                            "The server did not answer the commit: sp_sendPLN may have been created. Please "
                            "check the database, or run the setup again.\r\nUnexpected EOF from the server"));
  Click("btnSetup");
  EXPECT_EQ(FocusName(), "btnSetup");
  ExpectUsable();
}

TEST_F(NewSqlServerTest, NothingIsClickedWhileTheServerWorks) {
  MakeAndLogIn();
  Paste("cmbDatabase", Database());
  onConnect = [this] { PressEverything("btnRefresh"); };
  Click("btnRefresh");
  QCoreApplication::processEvents();
  ExpectUsable();
  EXPECT_EQ(dialog->Database() + "|" + FocusName(), Database() + "|btnRefresh");
  onConnect = [this] { PressEverything("btnSetup"); };
  Click("btnSetup");
  QCoreApplication::processEvents();
  EXPECT_TRUE(dialog->Configured());
  EXPECT_EQ(connections, 2);
}

TEST_F(NewSqlServerTest, ShowsTheScript) {
  EXPECT_EQ(ReviewCommandLine("C:\\Program Files\\Pellorin"),
            "notepad \"C:\\Program Files\\Pellorin\\sp_sendPLN_create.sql");
  const QByteArray path = qgetenv("PATH");
  const auto review = [&](const std::string& desktop) {  // what xdg-open does; when empty, there is none
    folder.Write("bin/xdg-open", "#!/bin/sh\n" + desktop + "\n");
    std::filesystem::permissions(folder / "bin/xdg-open", std::filesystem::perms::owner_all);
    qputenv("PATH", desktop.empty() ? "" : QByteArray::fromStdString(folder / "bin") + ":" + path);
    Click("btnReviewSource");
  };
  Make();
  Show();
  review("cd '" + folder.Path() + "'; printf '%s' \"$1\" > part; mv part opened");
  EXPECT_TRUE(QTest::qWaitFor([this] { return folder.Has("opened"); }));
  EXPECT_EQ(folder.Read("opened"), folder / kInstallScript);
  review("exit 3");
  ExpectScriptViewAndCloseIt();
  review("");
  ExpectScriptViewAndCloseIt();
  qputenv("PATH", path);
  std::filesystem::remove(folder / kInstallScript);
  messages.WillShowSome();
  Click("btnReviewSource");
  EXPECT_EQ(messages.Last().icon, MessageIcon::Exclamation);
  EXPECT_NE(messages.Last().text.find(folder / kInstallScript), std::string::npos) << messages.Last().text;
  EXPECT_EQ(dialog->findChild<QDialog*>(QStringLiteral("frmScriptView")), nullptr);
  ExpectUsable();
}

}  // namespace
}  // namespace pellorin::test
