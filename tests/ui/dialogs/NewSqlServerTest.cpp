// The dialog that installs sp_sendPLN, driven by keys and clicks.
#include "ui/dialogs/frmNewSqlServer.h"

#include <QPlainTextEdit>
#include <filesystem>

#include "sql/InstallScript.h"
#include "tests/support/RecordingMessages.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/FakeSetup.h"
#include "tests/ui/WindowUser.h"

namespace pellorin::test {
namespace {

const std::string kLoginFields = "ddcSqlServers txtSqlUsername txtSqlPassword";
const Names kDatabases = {"accounts", "master", "sales"};

class NewSqlServerTest : public ::testing::Test, protected WindowUser {
 protected:
  void TearDown() override {
    dialog.reset();
    messages.ExpectNoMore();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  }

  void Make() {
    dialog = std::make_unique<frmNewSqlServer>(
        nullptr,
        InstallerServices{setup, messages, SystemFiles(), [this] { return instances; }, folder.Path(),
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
    Paste("ddcSqlServers", "HOST1\r\n");
    Click("optSqlNative");
    EXPECT_EQ(FocusName(), "txtSqlUsername");
    Paste("txtSqlUsername", "sa\n");
    Paste("txtSqlPassword", "p w\n");
  }
  void Lock(const std::string& instance, const std::string& inDatabase) {  // one that is configured already
    dialog->SetServer(instance);
    dialog->SetIsServerReadOnly(true);
    dialog->SetDatabase(inDatabase);
    dialog->SetAuthenticationType("sql");
    dialog->SetUsername("sa");
    dialog->SetPassword("p w");
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
  void ExpectScriptViewAndCloseIt(const std::string& script) {
    QDialog* view = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] {
      view = dialog->findChild<QDialog*>(QStringLiteral("frmScriptView"));
      return view != nullptr && view->isVisible();
    }));
    auto* text = view->findChild<QPlainTextEdit*>();
    EXPECT_EQ(text->toPlainText().toStdString(), script);
    EXPECT_TRUE(text->isReadOnly());
    QTest::keyClick(view, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  TemporaryFolder folder;
  RecordingMessages messages;
  FakeSetup setup;
  Names instances;
  int helped = 0;
  std::unique_ptr<frmNewSqlServer> dialog;

 private:
  QWidget& Used() const override { return *dialog; }
};

TEST_F(NewSqlServerTest, OpensAsToldAndFollowsTheKeyboard) {
  instances = {"", "HOST1", "HOST1\\SALES", ""};
  Make();
  EXPECT_EQ(Entries("ddcSqlServers"), Names({"HOST1", "HOST1\\SALES"}));
  EXPECT_EQ(dialog->Server(), "HOST1");
  EXPECT_EQ(dialog->AuthenticationType(), "Trusted");
  EXPECT_EQ(OnOf(kLoginFields), "ddcSqlServers");
  Lock("no such host", "a 'b' [c]");
  Show();
  EXPECT_EQ(Text(kLoginFields + " cmbDatabase"), "no such host|sa|p w|a 'b' [c]");
  EXPECT_EQ(OnOf(kLoginFields), "txtSqlUsername txtSqlPassword");
  EXPECT_EQ(Text("lblLoginNotice"),
            "These credentials are for this installation only: the service's own stay as they are.");
  EXPECT_EQ(dialog->AuthenticationType(), "Sql");
  EXPECT_EQ(FocusName(), "optSqlNative");
  const QColor paper = Find("txtSqlUsername").palette().color(QPalette::Base);
  Press(Qt::Key_Up);
  EXPECT_EQ(dialog->AuthenticationType(), "Trusted");
  EXPECT_EQ(FocusName(), "optTrusted");
  EXPECT_NE(Find("txtSqlUsername").palette().color(QPalette::Base), paper);
  Click("btnHelp");
  Press(Qt::Key_F1);
  EXPECT_EQ(helped, 2);
  EXPECT_EQ(setup.calls, 0) << "a server was asked";
  ExpectUsable();
}

TEST_F(NewSqlServerTest, ListsTheDatabasesForTheUser) {
  setup.note = "how the installer was connected";
  MakeAndLogIn();
  Press(Qt::Key_Tab);
  EXPECT_EQ(setup.asked, "list HOST1 sa/p w");
  EXPECT_EQ(Entries("cmbDatabase"), kDatabases);
  EXPECT_EQ(Text("cmbDatabase lblConnectionNotice"), "master|how the installer was connected");
  EXPECT_EQ(FocusName(), "cmbDatabase");
  EXPECT_TRUE(Find("lblConnectionNotice").isVisible());
  for (const std::string typed : {"", "not [there]"}) {
    Paste("cmbDatabase", typed);
    Click("btnRefresh");
    EXPECT_EQ(dialog->Database(), typed.empty() ? "master" : typed);
  }
  // Another instance has other databases; what the user typed for it stays.
  Paste("ddcSqlServers", "HOST1x");
  EXPECT_EQ(dialog->Database(), "not [there]");
  EXPECT_TRUE(Entries("cmbDatabase").empty());
  EXPECT_FALSE(Find("lblConnectionNotice").isVisible());
  Find("cmbDatabase").setFocus();  // not by the user
  EXPECT_TRUE(Entries("cmbDatabase").empty());
  const int before = setup.calls;
  Press("Tab Shift+Tab");
  EXPECT_EQ(Entries("cmbDatabase"), kDatabases);
  EXPECT_EQ(dialog->Database(), "not [there]");
  EXPECT_EQ(setup.calls, before + 1);
  // One click on its arrow loads the list and opens it.
  Paste("ddcSqlServers", "HOST2");
  const auto& list = Find<QComboBox>("cmbDatabase");
  ClickAt(list.mapTo(dialog.get(), QPoint(list.width() - 8, list.height() / 2)));
  EXPECT_EQ(Entries("cmbDatabase"), kDatabases);
  EXPECT_TRUE(list.view()->isVisible());
}

TEST_F(NewSqlServerTest, AFailedListComesBackOnlyWhenAskedFor) {
  MakeAndLogIn();
  setup.databases.reset();
  setup.note = "the password was sent";
  Press(Qt::Key_Tab);
  EXPECT_EQ(dialog->Database() + "|" + FocusName(), "|cmbDatabase");
  EXPECT_EQ(dialog->SecurityNote(), setup.note);
  ExpectUsable();
  Press("Shift+Tab Tab");
  EXPECT_EQ(setup.calls, 1) << "it was asked for again";
  Paste("txtSqlPassword", "other");
  EXPECT_EQ(dialog->SecurityNote(), "");
  setup.databases = kDatabases;
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
  EXPECT_EQ(setup.calls, 0);
  Lock("tcp:HOST2", "");  // an instance that is configured already is never refused for its name
  Click("btnRefresh");
  EXPECT_EQ(dialog->Database(), "master");
}

TEST_F(NewSqlServerTest, InstallsWhatTheUserChose) {
  MakeAndLogIn();
  Press("Tab Ctrl+A");
  Type("orders");
  setup.succeeds = false;
  Press(Qt::Key_Return);
  EXPECT_EQ(setup.asked, "install HOST1 sa/p w orders");
  ExpectUsable();
  Click("optAllUsers chkAllowTempTables");
  setup.succeeds = true;
  Press("Alt+S");
  EXPECT_TRUE(QTest::qWaitFor([this] { return dialog->Configured(); }));  // a mnemonic clicks after a moment
  EXPECT_EQ(setup.asked, "install HOST1 sa/p w orders all temp");
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(NewSqlServerTest, NothingIsClickedWhileTheServerWorks) {
  MakeAndLogIn();
  Paste("cmbDatabase", "orders");
  for (const std::string button : {"btnRefresh", "btnSetup"}) {
    setup.onCall = [&] { PressEverything(button); };
    setup.succeeds = false;
    Click(button);
    QCoreApplication::processEvents();
    ExpectUsable();
    EXPECT_EQ(dialog->Database(), "orders");
    EXPECT_EQ(FocusName(), button);
  }
  EXPECT_EQ(setup.calls, 2);
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
  folder.Write(kInstallScript, "CREATE PROCEDURE sp_sendPLN AS\r\nSELECT 1");
  Make();
  Show();
  review("cd '" + folder.Path() + "'; printf '%s' \"$1\" > part; mv part opened");
  EXPECT_TRUE(QTest::qWaitFor([this] { return folder.Has("opened"); }));
  EXPECT_EQ(folder.Read("opened"), folder / kInstallScript);
  for (const char* desktop : {"exit 3", ""}) {
    review(desktop);
    ExpectScriptViewAndCloseIt("CREATE PROCEDURE sp_sendPLN AS\nSELECT 1");
  }
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
