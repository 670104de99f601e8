// The page of the SQL Server instances, driven by keys and clicks over a real service folder.
#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

const std::string kInstance =
    "[SQL:A]\r\nConnectionType=Sql\r\nSqlUsername=sales\r\nTimeout=300\r\nWidth=80\r\nDefaultFormat=HTML\r\n"
    "EncodeHTML=1\r\nStylesheet=blue.css\r\nPrimaryMailServer=one\r\nSecondaryMailServer=two\r\nConfiguredDB="
    "master\r\n"
    "AccessType=public\r\nEmailWhenQueryEmpty=0\r\nForceSetUser=1\r\nProhibitedTokens=drop\r\n"
    "RedirectAllEmailTo=a@b\r\nExceptionMode=CONTINUE\r\n";
const std::string kBare =
    "[SQL:B]\r\nConnectionType=Trusted\r\nDefaultFormat=Text\r\nPrimaryMailServer=two\r\n";
const std::string kOptions = "optTrusted optSqlNative optHTML optText";
const std::string kChecks = "chkEncodeHTML chkAnsiAttachment chkEmailWhenEmpty chkForceSetUser";
const std::string kTexts =
    "txtSqlUsername txtSqlPassword txtTimeout txtLineWidth txtProhibitedTokens txtRedirectAllEmailTo";
const std::string kLists = "cmbStylesheet cmbPrimaryMailServer cmbSecondaryMailServer cmbExceptionMode";

class SqlPageTest : public WindowFixture {
 protected:
  SqlPageTest() {
    for (const char* name : {"blue.css", "Default.CSS", "notes.txt"})
      folder.Write(std::string("Service/HTMLStylesheets/") + name, "");
  }
  void Open(const std::string& sections) {
    ASSERT_TRUE(Start(kMailOne + kMailTwo + sections));
    ClickTab(1);
  }
  std::string Keys(const std::string& section, const std::string& keys) const {
    QStringList values;
    for (const std::string& key : Words(keys)) values += QString::fromStdString(Stored(section, key));
    return values.join(QLatin1Char('|')).toStdString();
  }
  // Drives the installer's dialog: server and database typed, then Setup.
  void WillInstall(const std::string& typedServer, const std::string& user = {}) {
    InDialog([=, this](QDialog& dialog) {
      const auto type = [&](const char* name, const std::string& text) {
        auto* control = dialog.findChild<QWidget*>(QString::fromUtf8(name));
        control->setFocus(Qt::TabFocusReason);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_A, Qt::ControlModifier);
        for (const char key : text) QTest::keyClick(dialog.windowHandle(), key);
      };
      const auto click = [&](const char* name) {
        dialog.findChild<QAbstractButton*>(QString::fromUtf8(name))->click();
      };
      if (!typedServer.empty()) type("ddcSqlServers", typedServer);
      if (!user.empty()) {
        click("optSqlNative");
        type("txtSqlUsername", user);
        type("txtSqlPassword", "pw");
      }
      type("cmbDatabase", "sales");
      title = dialog.windowTitle().toStdString();
      click("btnSetup");
      if (dialog.isVisible()) dialog.reject();
    });
  }

  std::string title;
};

TEST_F(SqlPageTest, ShowsWhatIsStored) {
  Open(kInstance + kBare);
  EXPECT_EQ(Checked(kOptions + " " + kChecks), "optSqlNative optHTML chkEncodeHTML chkForceSetUser");
  EXPECT_EQ(Texts(kTexts), "sales||300|80|drop|a@b");
  EXPECT_EQ(Texts(kLists + " lblConfiguredDB"), "blue.css|one|two|CONTINUE|master (public access) ");
  EXPECT_EQ(OnOf("txtSqlUsername txtSqlPassword Label5 Label6"),
            "txtSqlUsername txtSqlPassword Label5 Label6");
  EXPECT_EQ(Entries("cmbStylesheet").size(), 2u);
  EXPECT_EQ(Entries("cmbPrimaryMailServer"), (Names{"one", "two"}));
  Choose("cmbSQLServer", 1);
  EXPECT_EQ(Checked(kOptions + " " + kChecks), "optTrusted optText chkEmailWhenEmpty");
  EXPECT_EQ(Texts(kTexts + " " + kLists), "|||||||two||");
  EXPECT_EQ(Texts("lblConfiguredDB"), "None");
  EXPECT_EQ(OnOf("txtSqlUsername txtSqlPassword Label5 Label6"), "");
  EXPECT_FALSE(IsModified());
}

TEST_F(SqlPageTest, EachControlStoresItsKeyAtOnce) {
  Open(kBare + kInstance);
  Click("optSqlNative");
  EXPECT_EQ(FocusName(), "txtSqlUsername");
  Type("bob");
  Replace("txtSqlPassword", "pw");
  Replace("txtTimeout", "60");
  Replace("txtLineWidth", "0");
  Replace("txtProhibitedTokens", "x");
  Replace("txtRedirectAllEmailTo", "c@d");
  for (const std::string& check : Words(kChecks)) Click(check);
  Click("optHTML");
  Choose("cmbStylesheet", 1);
  Choose("cmbPrimaryMailServer", 0);
  Choose("cmbSecondaryMailServer", 1);
  Choose("cmbExceptionMode", 0);
  SaveSuccessfully();
  const std::string keys =
      "ConnectionType SqlUsername SqlPassword Timeout Width ProhibitedTokens RedirectAllEmailTo EncodeHTML "
      "AnsiAttachment EmailWhenQueryEmpty ForceSetUser DefaultFormat PrimaryMailServer SecondaryMailServer "
      "ExceptionMode";
  EXPECT_EQ(Keys("SQL:B", keys), "Sql|bob|pw|60|0|x|c@d|1|1|0|1|HTML|one|two|STOP");
  EXPECT_EQ(Stored("SQL:B", "Stylesheet"), Entries("cmbStylesheet")[1]);
  Click("btnClearStylesheet");
  Click("btnClearSecondaryServer");
  Click("optTrusted");
  Click("optText");
  SaveSuccessfully();
  EXPECT_EQ(Keys("SQL:B", "Stylesheet SecondaryMailServer ConnectionType DefaultFormat"), "||Trusted|Text");
  Click("btnClearprimaryServer");
  messages.WillShow(Warning("Validation Errors",
                            "Please correct the following errors: \r\n\r\nSQL:B\r\n- Primary "
                            "mail server must be provided\r\n\r\n"));
  Click("btnSave");
  EXPECT_EQ(IniBytes().substr(IniBytes().find("[SQL:A]"), kInstance.size()), kInstance);
}

TEST_F(SqlPageTest, ChecksNumbersAsTheyAreTyped) {
  Open(kInstance);
  for (const auto& [box, message, stored] : {std::tuple("txtTimeout", "Timeout must be a number.", "300"),
                                             {"txtLineWidth", "Line width must be a number.", "80"}}) {
    Click(box);
    Press(Qt::Key_End);
    messages.WillShow(Plain(message, "Data Type Error"));
    Type("s");
    EXPECT_EQ(Text(box), stored);
    EXPECT_EQ(FocusName(), box);
    Replace(box, "");
  }
  SaveSuccessfully();
  EXPECT_EQ(Keys("SQL:A", "Timeout Width"), "|");
}

TEST_F(SqlPageTest, NamesListValuesThatAreLost) {
  Open(Replaced(Replaced(kInstance, "blue.css", "gone.css"), "Server=two", "Server=old") +
       Replaced(kBare, "Trusted", "sql"));
  const std::string sheet = "The style sheet \"gone.css\" is not in its list, and is not set any more.";
  const std::string backup = "The backup mail server \"old\" is not in its list, and is not set any more.";
  const auto hasTabIcon = [this] { return !Find<QTabWidget>("tabMain").tabIcon(1).isNull(); };
  EXPECT_EQ(Text("lblSqlNotice"), backup + "\r\n" + sheet);
  EXPECT_TRUE(IsModified() && hasTabIcon());
  Choose("cmbSQLServer", 1);
  EXPECT_EQ(Text("lblSqlNotice"),
            "The stored connection type is neither Trusted nor Sql. Please choose one.");
  EXPECT_EQ(Checked("optTrusted optSqlNative"), "optSqlNative");  // they stay as they were
  Choose("cmbSQLServer", 0);
  Choose("cmbSQLServer", 0);
  EXPECT_EQ(Text("lblSqlNotice"), backup + "\r\n" + sheet);
  Click("btnClearSecondaryServer");
  Choose("cmbStylesheet", 1);
  EXPECT_FALSE(Find("lblSqlNotice").isVisible() || hasTabIcon());
  ::unlink((folder / ("Service/HTMLStylesheets/" + Text("cmbStylesheet"))).c_str());
  const std::string gone = Text("cmbStylesheet");
  Click("btnRefreshStylesheets");
  EXPECT_EQ(Text("lblSqlNotice"), Replaced(sheet, "gone.css", gone));
  SaveSuccessfully();
  EXPECT_EQ(Keys("SQL:A", "Stylesheet SecondaryMailServer PrimaryMailServer"), "||one");
  EXPECT_EQ(Keys("SQL:B", "ConnectionType"), "sql");
  Start(kMailOne + Replaced(kBare, "Trusted", "sql"));
  EXPECT_EQ(Checked("optTrusted optSqlNative"), "");
}

TEST_F(SqlPageTest, KeepsItsListsOfMailServersRight) {
  Open(kInstance + kBare);
  ClickTab(0);
  Add("three");
  Replace("txtSenderEmail", "c@d");
  ClickTab(1);
  EXPECT_EQ(Entries("cmbPrimaryMailServer"), (Names{"one", "two", "three"}));
  EXPECT_EQ(Texts("cmbPrimaryMailServer cmbSecondaryMailServer"), "one|two");
  ClickTab(0);
  messages.WillShow(
      Question("Delete Section", "Do you want to delete settings for server three?", MessageButtons::YesNo),
      Answer::Yes);
  Click("btnDeleteMailSettings");
  ClickTab(1);
  EXPECT_EQ(Entries("cmbSecondaryMailServer"), (Names{"one", "two"}));
  EXPECT_FALSE(IsModified());
  folder.Write("Service/HTMLStylesheets/new.css", "");
  Click("btnRefreshStylesheets");
  Click("btnRefreshPrimaryServer");
  EXPECT_EQ(Entries("cmbStylesheet").size(), 3u);
  EXPECT_EQ(Texts(kLists), "blue.css|one|two|CONTINUE");
  EXPECT_FALSE(IsModified());
}

TEST_F(SqlPageTest, AddsAnInstanceThroughTheInstaller) {
  Open(kInstance);
  ClickTab(2);
  AddQueue("Q");
  Click("optQueueAll");
  ClickTab(1);
  WillInstall("HOST9", "sa");
  Click("btnAddNewSqlServer");
  EXPECT_EQ(title, "New Sql Server Instance");
  EXPECT_EQ(setup.asked.back(), "install HOST9 sa/pw sales");
  EXPECT_EQ(Entries("cmbSQLServer"), (Names{"HOST9", "A"}));
  EXPECT_EQ(Texts(kTexts), "sa|pw|300|0||");
  EXPECT_EQ(Texts("cmbSQLServer cmbStylesheet lblConfiguredDB"),
            "HOST9|Default.CSS|sales (sysadmin access) ");
  EXPECT_EQ(Checked(kOptions), "optSqlNative optText");
  EXPECT_EQ(Lines("lstQueueApplServers"), "A|HOST9");
  messages.WillShow(
      Warning("Validation Errors",
              "Settings for sever HOST9 need to be corrected: \r\n- Primary mail server must be "
              "provided\r\n"));
  Choose("cmbSQLServer", 1);
  EXPECT_EQ(Text("cmbSQLServer"), "HOST9");
  Choose("cmbPrimaryMailServer", 0);
  messages.WillShow(
      Question("Delete Section", "Do you want to delete settings for server HOST9?", MessageButtons::YesNo),
      Answer::Yes);
  Click("btnDeleteSqlSettings");
  EXPECT_EQ(Entries("cmbSQLServer"), Names{"A"});
  EXPECT_EQ(Lines("lstQueueApplServers"), "A");
  setup.succeeds = false;
  WillInstall("HOST8");
  Click("btnAddNewSqlServer");
  EXPECT_EQ(Entries("cmbSQLServer"), Names{"A"});
  setup.succeeds = true;
  ::unlink((folder / "Service/HTMLStylesheets/Default.CSS").c_str());
  Click("btnRefreshStylesheets");
  WillInstall("HOST7");
  Click("btnAddNewSqlServer");
  Choose("cmbPrimaryMailServer", 0);
  ClickTab(2);
  Click("optQueueNone");
  window->activateWindow();  // which the windowing system does by itself
  Replace("txtSchedulerUsername", "u");
  Replace("txtSchedulerPassword", "p");
  SaveSuccessfully();
  EXPECT_EQ(Keys("SQL:HOST7", "ConnectionType SqlUsername Stylesheet ConfiguredDB AllowTempTables"),
            "Trusted|||sales|0");
  EXPECT_EQ(IniBytes().find("Stylesheet=\r\n"), std::string::npos);
}

TEST_F(SqlPageTest, InstallsAgainWithTheLockedInstance) {
  Open(kInstance);
  WillInstall("");
  Click("btnConfigure");
  EXPECT_EQ(title, "Sql Server Instance A");
  EXPECT_EQ(setup.asked.back(), "install A sales/ sales all");
  EXPECT_EQ(Text("lblConfiguredDB"), "sales (public access) ");
  SaveSuccessfully();
  EXPECT_EQ(Keys("SQL:A", "ConfiguredDB AccessType AllowTempTables"), "sales|public|0");
}

}  // namespace
}  // namespace pellorin::test
