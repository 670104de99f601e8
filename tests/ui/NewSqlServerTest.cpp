// The dialog that installs sp_sendPLN, driven by keys and clicks over the real engine and driver.
#include <sys/stat.h>
#include <unistd.h>

#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTimer>
#include <thread>

#include "sql/InstallScript.h"
#include "tests/sql/SqlServerFixture.h"
#include "tests/ui/WindowFixture.h"
#include "ui/BusyWindow.h"
#include "ui/QtUserMessages.h"
#include "ui/dialogs/frmNewSqlServer.h"

namespace pellorin::test {
namespace {

constexpr int kOpening = 2;  // steps of the conversation until a connection is open
const std::string kScript =
    "CREATE PROCEDURE sp_sendPLN AS\r\n--sqlstart\r\nSELECT 1\r\n--sqlend\r\nSELECT 2";
const std::string kPermissions =
    " The account you use to connect to the database may have insufficient permissions.\r\n";
const std::string kCannotConnect =
    "Could not open connection. Please make sure that the SQL server name is spelled correctly and that the "
    "account you use to connect has sufficient permissions.\r\n";

// A connection that gives up soon, whatever the engine grants it.
class HastyConnection : public OdbcConnection {
 public:
  void Open() override {
    ConnectionTimeout = std::chrono::seconds(1);
    OdbcConnection::Open();
  }
};

class NewSqlServerTest : public SqlServerTest {
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
        nullptr, InstallerServices{installer, messages, [this] { return instances; }, folder.Path(),
                                   [this](QWidget& owner) { helped += &owner == dialog.get() ? 1 : 0; }});
  }
  void Show() {
    dialog->setModal(true);
    dialog->show();
    dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
  }
  void MakeAndLogIn() {  // as the user does it, up to the database
    Make();
    Show();
    Fill("ddcSqlServers", server);
    Click("optSqlNative");
    EXPECT_EQ(Focus(), "txtSqlUsername");
    Fill("txtSqlUsername", user);
    Fill("txtSqlPassword", password);
  }

  template <typename Control = QWidget>
  Control& Find(const std::string& name) const {
    auto* control = dialog->findChild<Control*>(QString::fromStdString(name));
    if (control == nullptr) throw std::runtime_error("no control " + name);
    return *control;
  }
  QPoint PlaceOf(const std::string& name) const {
    const QWidget& control = Find(name);
    return control.mapTo(dialog.get(), QPoint(std::min(10, control.width() / 2), control.height() / 2));
  }
  void Click(const std::string& name) const {
    ASSERT_TRUE(Find(name).isVisible()) << name;
    QTest::mouseClick(dialog->windowHandle(), Qt::LeftButton, {}, PlaceOf(name));
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
    QTest::keyClick(dialog->windowHandle(), key, modifiers);
  }
  void Fill(const std::string& name, const std::string& text) const {  // Tab order is not disturbed
    Find(name).setFocus();
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_Delete);
    QApplication::clipboard()->setText(QString::fromStdString(text));
    Press(Qt::Key_V, Qt::ControlModifier);
  }
  std::string Focus() const {
    const QWidget* focus = QApplication::focusWidget();
    return focus == nullptr ? "none" : focus->objectName().toStdString();
  }
  Names Entries(const std::string& list) const {
    Names entries;
    for (int index = 0; index < Find<QComboBox>(list).count(); ++index)
      entries.push_back(Find<QComboBox>(list).itemText(index).toStdString());
    return entries;
  }
  bool Offers(const std::string& name) const {
    const Names entries = Entries("cmbDatabase");
    return std::count(entries.begin(), entries.end(), name) == 1;
  }
  int Steps() const { return tds ? tds->Steps() : 0; }
  std::string OnOf(const std::string& names) const {
    std::string on;
    for (const std::string& name : Words(names))
      if (Find(name).isEnabled()) on += (on.empty() ? "" : " ") + name;
    return on;
  }
  void ExpectUsable() const {
    EXPECT_TRUE(dialog->isVisible() && dialog->isEnabled() && !dialog->Configured());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  }

  TemporaryFolder folder;
  RecordingMessages messages;
  ProcedureInstaller installer{[] { return std::make_unique<HastyConnection>(); }, SystemFiles(),
                               folder.Path(), messages};
  Names instances;
  int helped = 0;
  std::unique_ptr<frmNewSqlServer> dialog;
};

TEST_F(NewSqlServerTest, OpensAsToldAndHoldsItsProperties) {
  instances = {"", "HOST1", "HOST1\\SALES", ""};
  Make();
  EXPECT_EQ(Entries("ddcSqlServers"), Names({"HOST1", "HOST1\\SALES"}));
  EXPECT_EQ(dialog->Server() + "|" + dialog->Database() + "|" + dialog->AuthenticationType() + "|" +
                dialog->AccessType() + "|" + dialog->windowTitle().toStdString(),
            "HOST1||Trusted|sysadmin|New Sql Server Instance");
  EXPECT_EQ(OnOf("ddcSqlServers txtSqlUsername txtSqlPassword"), "ddcSqlServers");
  EXPECT_EQ(dialog->AllowTempTables(), 0);

  dialog->SetServer("no such host");
  dialog->SetDatabase("a 'b' [c]");
  dialog->SetAuthenticationType("sql");
  dialog->SetUsername("u");
  dialog->SetPassword("p;");
  dialog->SetAccessType("public");
  dialog->SetAllowTempTables(1);
  dialog->SetIsServerReadOnly(true);
  Show();
  EXPECT_EQ(dialog->Server() + "|" + dialog->Database() + "|" + dialog->AuthenticationType() + "|" +
                dialog->Username() + "|" + dialog->Password() + "|" + dialog->AccessType(),
            "no such host|a 'b' [c]|Sql|u|p;|public");
  EXPECT_EQ(dialog->AllowTempTables(), 1);
  EXPECT_EQ(OnOf("ddcSqlServers txtSqlUsername txtSqlPassword"), "txtSqlUsername txtSqlPassword");
  EXPECT_EQ(Focus(), "optSqlNative");
  EXPECT_TRUE(Find("lblSetupNotice").isVisible() && Find("lblGrantNotice").isVisible());
  EXPECT_NE(Find<QLabel>("lblLoginNotice").text().indexOf(QStringLiteral("this installation only")), -1);
  const QColor paper = Find("txtSqlUsername").palette().color(QPalette::Base);
  Press(Qt::Key_Up);
  EXPECT_EQ(dialog->AuthenticationType() + Focus(), "TrustedoptTrusted");
  EXPECT_NE(Find("txtSqlUsername").palette().color(QPalette::Base), paper);
  dialog->SetAccessType("?");
  EXPECT_EQ(dialog->AccessType(), "sysadmin");
  Click("btnHelp");
  EXPECT_EQ(helped, 1);
  ExpectUsable();
}

TEST_F(NewSqlServerTest, ListsTheDatabasesForTheUser) {
  MakeAndLogIn();
  Press(Qt::Key_Tab);
  EXPECT_EQ(dialog->Database() + "|" + Focus(), "master|cmbDatabase");
  EXPECT_TRUE(Offers(database));
  const std::string typed = "not [there]";
  Fill("cmbDatabase", typed);
  Click("btnRefresh");
  EXPECT_EQ(dialog->Database(), typed);
  EXPECT_TRUE(Offers(database));
  Fill("cmbDatabase", "");
  Click("btnRefresh");
  EXPECT_EQ(dialog->Database(), "master");
  // Another instance has other databases; what the user typed for it stays.
  Fill("cmbDatabase", typed);
  Fill("ddcSqlServers", server + "x");
  EXPECT_EQ(dialog->Database(), typed);
  EXPECT_TRUE(Entries("cmbDatabase").empty());
  Fill("ddcSqlServers", server);
  const int before = Steps();
  dialog->SetDatabase("x");
  Find("cmbDatabase").setFocus();  // not by the user
  EXPECT_TRUE(Entries("cmbDatabase").empty());
  Press(Qt::Key_Tab);
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(Offers(database));
  EXPECT_EQ(dialog->Database(), "x");
  EXPECT_EQ(Steps(), tds ? before + kOpening + 1 : 0);
  // One click on its arrow loads the list and opens it.
  Fill("ddcSqlServers", server + " ");
  Fill("ddcSqlServers", server);
  const auto& list = Find<QComboBox>("cmbDatabase");
  QTest::mouseClick(dialog->windowHandle(), Qt::LeftButton, {},
                    list.mapTo(dialog.get(), QPoint(list.width() - 8, list.height() / 2)));
  EXPECT_TRUE(Offers(database) && list.view()->isVisible());
}

TEST_F(NewSqlServerTest, AFailedListComesBackOnlyWhenAskedFor) {
  MakeAndLogIn();
  struct Row {
    std::string description;
    std::optional<Hook> hook;
    int step;
    Message box;
  };
  std::vector<Row> rows{
      {"password",
       {},
       0,
       Warning("Connection Error", kCannotConnect + "Login failed for user '" + user + "'.")}};
  if (tds) {
    rows.push_back({"silent", Hook::Silent(), 1, {}});
    rows.push_back({"dropped", Hook::Drop(), 3, {}});
    rows.push_back({"denied", Hook::Error(229, "The SELECT permission was denied."), 3,
                    Warning("SQL Error",
                            "Could not retrieve the list of databases. Please make sure that the "
                            "account you use to connect has sufficient permissions.\r\nThe SELECT "
                            "permission was denied.")});
  }
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    Fill("txtSqlPassword", row.hook ? password : "wrong");
    if (row.hook) tds->AtStep(tds->Steps() + row.step, *row.hook);
    row.box.text.empty() ? messages.WillShowSome() : messages.WillShow(row.box);
    Press(Qt::Key_Tab);
    messages.ExpectNoMore();
    EXPECT_EQ(dialog->Database() + "|" + Focus(), "|cmbDatabase");
    ExpectUsable();
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    Press(Qt::Key_Tab);  // shows no box again
    Fill("txtSqlPassword", "");
  }
  messages.WillShowSome();
  Press(Qt::Key_Tab);
  Fill("txtSqlPassword", password);
  Click("btnRefresh");
  EXPECT_EQ(dialog->Database(), "master");
}

TEST_F(NewSqlServerTest, RefusesBeforeItConnects) {
  const Message missing =
      Warning("Missing Information",
              "Please provide a server name and a database name for the installation to proceed");
  const Message duplicate = Warning("Duplicate Entry", "A server with this name already configured");
  const Message sign =
      Warning("Invalid Name",
              "A name cannot hold a colon, a closing bracket, a vertical bar or a control character.");
  const Message blank = Warning("Invalid Name", "A name cannot begin or end with a blank.");
  const struct {
    std::string server, database;
    Message box;
  } cases[] = {{"", "master", missing},     {"HOST2", "", missing},   {"host1\\SALES", "m", duplicate},
               {"tcp:odd", "m", duplicate}, {"tcp:HOST2", "m", sign}, {"HOST2 ", "m", blank},
               {"HOST2]", "m", sign}};
  Make();
  dialog->SetExistingServers({"HOST1\\Sales", "TCP:ODD"});
  Show();
  const int before = Steps();
  for (const auto& row : cases) {
    SCOPED_TRACE(row.server);
    Fill("ddcSqlServers", row.server);
    Fill("cmbDatabase", row.database);
    messages.WillShow(row.box);
    Press(Qt::Key_Return);
    messages.ExpectNoMore();
    ExpectUsable();
  }
  messages.WillShow(sign);
  Click("btnRefresh");
  EXPECT_EQ(Steps(), before);
  // An instance that is configured already is never refused for its name.
  dialog->SetServer("tcp:" + server);
  dialog->SetIsServerReadOnly(true);
  dialog->SetAuthenticationType("Sql");
  dialog->SetUsername(user);
  dialog->SetPassword(password);
  Fill("cmbDatabase", "");
  Click("btnRefresh");
  EXPECT_EQ(dialog->Database(), "master");
}

TEST_F(NewSqlServerTest, InstallsAndUpdates) {
  MakeAndLogIn();
  Press(Qt::Key_Tab);
  Press(Qt::Key_A, Qt::ControlModifier);
  for (const char key : database) QTest::keyClick(dialog->windowHandle(), key);
  EXPECT_EQ(dialog->Database(), database);
  Press(Qt::Key_Return);
  EXPECT_TRUE(dialog->Configured());
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(Procedure(), kScript);
  EXPECT_FALSE(IsGranted());

  Make();
  dialog->SetServer(server);
  dialog->SetIsServerReadOnly(true);
  dialog->SetDatabase(database);
  dialog->SetAuthenticationType("Sql");
  dialog->SetUsername(user);
  dialog->SetPassword(password);
  Show();
  Click("optAllUsers");
  Click("chkAllowTempTables");
  Press(Qt::Key_S, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return dialog->Configured(); }));  // a mnemonic clicks after a moment
  EXPECT_TRUE(IsGranted());
  EXPECT_NE(Procedure().find("/* --sqlstart\r\nSELECT 1\r\n--sqlend */"), std::string::npos) << Procedure();
  EXPECT_EQ(dialog->AccessType() + std::to_string(dialog->AllowTempTables()), "public1");
}

TEST_F(NewSqlServerTest, StaysUsableWhateverStepFails) {
  if (IsReal()) GTEST_SKIP() << "needs a server that fails on demand";
  const std::string cannotCreate = "Could not create sp_sendPLN procedure.";
  const std::string sentences[] = {
      cannotCreate,  // beginning
      "Could not switch the database context to " + database + ".",
      "Could not determine if the stored procedure already exists in the database.",
      cannotCreate,
      "Could not grant access to this procedure to role PUBLIC.",
      cannotCreate};  // committing
  MakeAndLogIn();
  Fill("cmbDatabase", database);
  Click("optAllUsers");
  for (int index = 0; index < static_cast<int>(std::size(sentences)); ++index) {
    tds->AtStep(tds->Steps() + kOpening + index + 1, Hook::Error(229, "Permission was denied."));
    messages.WillShow(Warning("SQL Error", sentences[index] + kPermissions + "Permission was denied."));
    Click("btnSetup");
    messages.ExpectNoMore();
    EXPECT_EQ(Focus(), "btnSetup");
    ExpectUsable();
    EXPECT_EQ(Procedure(), "");
  }
  Fill("txtSqlPassword", "wrong");
  messages.WillShowSome();
  Press(Qt::Key_Return);
  EXPECT_EQ(messages.Last().title, "Connection Error");
  ExpectUsable();
  Fill("txtSqlPassword", password);
  Click("btnSetup");
  EXPECT_TRUE(dialog->Configured() && IsGranted());
}

TEST_F(NewSqlServerTest, NothingIsClickedWhileTheServerWorks) {
  if (IsReal()) GTEST_SKIP() << "needs a server that answers late";
  MakeAndLogIn();
  Fill("cmbDatabase", database);
  const auto post = [this](QEvent* event) { QCoreApplication::postEvent(dialog->windowHandle(), event); };
  const auto key = [&](Qt::Key code, const QString& text, Qt::KeyboardModifiers modifiers = {}) {
    post(new QKeyEvent(QEvent::KeyPress, code, modifiers, text));
    post(new QKeyEvent(QEvent::KeyRelease, code, modifiers, text));
  };
  // Input that comes while the answer to `step` is awaited.
  const auto meanwhile = [&](int step, const std::string& button) {
    const int awaited = tds->Steps() + step;
    tds->AtStep(awaited, Hook::Delay(std::chrono::milliseconds(200)));
    const QPointF place = PlaceOf(button), cancel = PlaceOf("btnCancel");
    std::thread hands([=, this] {
      const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
      while (tds->Steps() < awaited && std::chrono::steady_clock::now() < end) std::this_thread::yield();
      for (const QPointF& point : {place, cancel})
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
          post(new QMouseEvent(type, point, point, Qt::LeftButton,
                               type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, {}));
      key(Qt::Key_X, QStringLiteral("x"));
      key(Qt::Key_Return, QStringLiteral("\r"));
      key(Qt::Key_Escape, {});
      QCoreApplication::postEvent(dialog.get(), new QCloseEvent);
    });
    Click(button);
    hands.join();
    QCoreApplication::processEvents();
  };
  meanwhile(kOpening + 1, "btnRefresh");
  ExpectUsable();
  EXPECT_EQ(dialog->Database() + "|" + Focus(), database + "|btnRefresh");
  const auto statement = [this](const std::string& text) {
    const auto sent = tds->Batches();
    return std::count(sent.begin(), sent.end(), text);
  };
  EXPECT_EQ(statement("select name from sysdatabases order by name"), 1);
  EXPECT_EQ(statement(kScript), 0);
  meanwhile(kOpening + 4, "btnSetup");
  EXPECT_TRUE(dialog->Configured());
  EXPECT_EQ(statement(kScript), 1);
  EXPECT_EQ(statement("select count(*) from sysobjects where xtype='P' and name='sp_sendPLN'"), 1);
}

TEST_F(NewSqlServerTest, IsLeftWithoutATrace) {
  for (const auto& leave : std::vector<std::function<void()>>{
           [this] { Click("btnCancel"); }, [this] { Press(Qt::Key_Escape); }, [this] { dialog->close(); }}) {
    MakeAndLogIn();
    leave();
    EXPECT_FALSE(dialog->isVisible() || dialog->Configured());
  }
  EXPECT_EQ(Procedure(), "");
}

TEST_F(NewSqlServerTest, ShowsTheScript) {
  EXPECT_EQ(ReviewCommandLine("C:\\Program Files\\Pellorin"),
            "notepad \"C:\\Program Files\\Pellorin\\sp_sendPLN_create.sql");
  const QByteArray path = qgetenv("PATH");
  const auto desktop = [&](const std::string& body) {  // what xdg-open does
    folder.Write("bin/xdg-open", "#!/bin/sh\n" + body + "\n");
    ::chmod((folder / "bin/xdg-open").c_str(), 0755);
    qputenv("PATH", QByteArray::fromStdString(folder / "bin") + ":" + path);
  };
  const auto closeView = [this] {  // after its text was looked at
    QDialog* view = nullptr;
    EXPECT_TRUE(QTest::qWaitFor([&] {
      view = dialog->findChild<QDialog*>(QStringLiteral("frmScriptView"));
      return view != nullptr && view->isVisible();
    }));
    if (view == nullptr) return;
    auto* text = view->findChild<QPlainTextEdit*>();
    EXPECT_EQ(text->toPlainText().replace(QLatin1Char('\n'), QStringLiteral("\r\n")).toStdString(), kScript);
    EXPECT_TRUE(text->isReadOnly());
    QTest::keyClick(view, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  };
  Make();
  Show();
  desktop("printf '%s' \"$1\" > '" + (folder / "part") + "'; mv '" + (folder / "part") + "' '" +
          (folder / "opened") + "'");
  Click("btnReviewSource");
  EXPECT_TRUE(QTest::qWaitFor([this] { return ::access((folder / "opened").c_str(), F_OK) == 0; }));
  EXPECT_EQ(folder.Read("opened"), folder / kInstallScript);
  desktop("exit 3");
  Click("btnReviewSource");
  closeView();
  qputenv("PATH", "");
  Click("btnReviewSource");
  closeView();
  qputenv("PATH", path);
  ::unlink((folder / kInstallScript).c_str());
  messages.WillShowSome();
  Click("btnReviewSource");
  EXPECT_EQ(messages.Last().icon, MessageIcon::Exclamation);
  EXPECT_NE(messages.Last().text.find(folder / kInstallScript), std::string::npos) << messages.Last().text;
  EXPECT_EQ(dialog->findChild<QDialog*>(QStringLiteral("frmScriptView")), nullptr);
  ExpectUsable();
}

TEST_F(NewSqlServerTest, BoxesLieOverTheBusyDialogWithTheNormalPointer) {
  QWidget owner;
  QtUserMessages boxes;
  boxes.SetOwner(&owner);
  Make();
  Show();
  {
    const BusyWindow busy(*dialog);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    EXPECT_FALSE(dialog->isEnabled());
    QTimer::singleShot(0, dialog.get(), [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      EXPECT_EQ(box->parentWidget(), dialog.get());
      EXPECT_TRUE(box->isEnabled());
      EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
      QTest::keyClick(box, Qt::Key_Return);
    });
    EXPECT_EQ(boxes.Show(Plain("text")), Answer::Ok);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  }
  ExpectUsable();
}

}  // namespace
}  // namespace pellorin::test
