// The page of the SQL Server instances, driven by keys and clicks over a real service folder.
#include <filesystem>

#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

const std::string kInstance =
    "[SQL:A]\r\nConnectionType=Sql\r\nSqlUsername=sales\r\nTimeout=300\r\nWidth=80\r\nDefaultFormat=HTML\r\n"
    "EncodeHTML=1\r\nStylesheet=blue.css\r\nPrimaryMailServer=one\r\nSecondaryMailServer=two\r\n"
    "ConfiguredDB=master\r\nAccessType=public\r\nEmailWhenQueryEmpty=0\r\nForceSetUser=1\r\n"
    "ProhibitedTokens=drop\r\nRedirectAllEmailTo=a@b\r\nExceptionMode=CONTINUE\r\n";
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
  // Drives the installer's dialog: server and database typed unless they are empty, then Setup.
  void WillInstall(const std::string& typedServer, const std::string& typedDatabase = {},
                   const std::string& login = {}) {
    InDialog([=, this](QDialog& dialog) {
      const DialogUser user(dialog);
      if (!typedServer.empty()) user.Paste("ddcSqlServers", typedServer);
      if (!login.empty()) {
        user.Click("optSqlNative");
        user.Paste("txtSqlUsername", login);
        user.Paste("txtSqlPassword", "pw");
      }
      if (!typedDatabase.empty()) user.Paste("cmbDatabase", typedDatabase);
      title = dialog.windowTitle().toStdString();
      user.Click("btnSetup");
      if (dialog.isVisible()) dialog.reject();
    });
  }

  std::string title;
};

TEST_F(SqlPageTest, ShowsWhatIsStored) {
  const std::string login = "txtSqlUsername txtSqlPassword Label5 Label6";
  Open(kInstance + kBare);
  EXPECT_EQ(Checked(kOptions + " " + kChecks), "optSqlNative optHTML chkEncodeHTML chkForceSetUser");
  EXPECT_EQ(Text(kTexts + " " + kLists + " lblConfiguredDB"),
            "sales||300|80|drop|a@b|blue.css|one|two|CONTINUE|master (public access) ");
  EXPECT_EQ(OnOf(login), login);
  EXPECT_EQ(Entries("cmbStylesheet").size(), 2u);
  EXPECT_EQ(Entries("cmbPrimaryMailServer"), (Names{"one", "two"}));
  Choose("cmbSQLServer", 1);
  EXPECT_EQ(Checked(kOptions + " " + kChecks), "optTrusted optText chkEmailWhenEmpty");
  EXPECT_EQ(Text(kTexts + " " + kLists + " lblConfiguredDB"), "|||||||two|||None");
  EXPECT_EQ(OnOf(login), "");
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
  Click(kChecks + " optHTML");
  Choose("cmbStylesheet", 1);
  Choose("cmbPrimaryMailServer", 0);
  Choose("cmbSecondaryMailServer", 1);
  Choose("cmbExceptionMode", 0);
  SaveSuccessfully();
  EXPECT_EQ(Stored("SQL:B",
                   "ConnectionType SqlUsername SqlPassword Timeout Width ProhibitedTokens RedirectAllEmailTo "
                   "EncodeHTML AnsiAttachment EmailWhenQueryEmpty ForceSetUser DefaultFormat "
                   "PrimaryMailServer SecondaryMailServer ExceptionMode Stylesheet"),
            "Sql|bob|pw|60|0|x|c@d|1|1|0|1|HTML|one|two|STOP|" + Entries("cmbStylesheet")[1]);
  Click("btnClearStylesheet btnClearSecondaryServer optTrusted optText");
  SaveSuccessfully();
  EXPECT_EQ(Stored("SQL:B", "Stylesheet SecondaryMailServer ConnectionType DefaultFormat"), "||Trusted|Text");
  Click("btnClearprimaryServer");
  Save(Invalid({"SQL:B\r\n- Primary mail server must be provided"}));
  EXPECT_EQ(IniBytes().substr(IniBytes().find("[SQL:A]"), kInstance.size()), kInstance);
}

TEST_F(SqlPageTest, NamesListValuesThatAreLost) {
  Open(Replaced(Replaced(kInstance, "blue.css", "gone.css"), "Server=two", "Server=old") +
       Replaced(kBare, "Trusted", "sql"));
  const std::string sheet = "The style sheet \"gone.css\" is not in its list, and is not set any more.";
  const std::string backup = "The backup mail server \"old\" is not in its list, and is not set any more.";
  const std::string redirected =
      "All mail of this instance goes to a@b instead of its recipients (Redirect All Email To).";
  const auto hasTabIcon = [this] { return !Find<QTabWidget>("tabMain").tabIcon(1).isNull(); };
  EXPECT_EQ(Text("lblSqlNotice"), redirected + "\r\n" + backup + "\r\n" + sheet);
  EXPECT_TRUE(IsModified() && hasTabIcon());
  Choose("cmbSQLServer", 1);
  EXPECT_EQ(Text("lblSqlNotice"),
            "The stored connection type is neither Trusted nor Sql. Please choose one.");
  EXPECT_EQ(Checked("optTrusted optSqlNative"), "optSqlNative");  // they stay as they were
  Choose("cmbSQLServer", 0);
  Choose("cmbSQLServer", 0);
  Replace("txtRedirectAllEmailTo", "");
  EXPECT_EQ(Text("lblSqlNotice"), backup + "\r\n" + sheet);
  Click("btnClearSecondaryServer");
  Choose("cmbStylesheet", 1);
  EXPECT_FALSE(Find("lblSqlNotice").isVisible() || hasTabIcon());
  std::filesystem::remove(folder / ("Service/HTMLStylesheets/" + Text("cmbStylesheet")));
  const std::string gone = Text("cmbStylesheet");
  Click("btnRefreshStylesheets");
  EXPECT_EQ(Text("lblSqlNotice"), Replaced(sheet, "gone.css", gone));
  SaveSuccessfully();
  EXPECT_EQ(Stored("SQL:A", "Stylesheet SecondaryMailServer PrimaryMailServer"), "||one");
  EXPECT_EQ(Stored("SQL:B", "ConnectionType"), "sql");
  Start(kMailOne + Replaced(kBare, "Trusted", "sql"));
  EXPECT_EQ(Checked("optTrusted optSqlNative"), "");
}

TEST_F(SqlPageTest, TellsAMissingConnectionTypeAndTakesARefusedOneBack) {
  const std::string none = "No connection type is stored. Please choose one.";
  for (const auto& [line, notice] : {std::pair("", none),
                                     {"ConnectionType=\r\n", none},
                                     {"connectiontype=Trusted\r\n",
                                      "The connection type is stored as \"connectiontype\". Please correct "
                                      "the spelling of this key in the "
                                      "file."}}) {
    Open(kInstance + Replaced(kBare, "ConnectionType=Trusted\r\n", line));
    Choose("cmbSQLServer", 1);
    EXPECT_EQ(Text("lblSqlNotice"), notice);
    EXPECT_EQ(Checked("optTrusted optSqlNative"), "optSqlNative");
  }
  messages.WillShowSome();
  Click("optTrusted");
  EXPECT_NE(messages.Last().text.find("holds it in another letter case"), std::string::npos);
  EXPECT_EQ(Checked("optTrusted optSqlNative"), "optSqlNative");
  EXPECT_TRUE(IsOn("txtSqlUsername"));
}

TEST_F(SqlPageTest, ShowingLeavesSectionsAloneThatCannotBeWritten) {
  const std::string first = "[SQL:B]\r\nConnectionType=Trusted\r\nPrimaryMailServer=two\r\nQueues=Q\r\n";
  const std::string cut = "[SQL:C]\r\nPrimaryMailServer=two\r\nStylesheet=gone.css\r\nQueues=Q,R\r\nPad=" +
                          std::string(10000, 'x') + "\r\n";
  const std::string ini = kMailTwo + first + first + cut + kAdmin + "SchedulerPassword=<\\_\r\n";
  WriteQueue("Q", "<queue queuebydefault=\"all\" queuebydefaultservers=\"B\"/>");
  WriteQueue("Unwritable", "<?xml version=\"1.0\" encoding=\"HZ\"?><queue/>");
  ASSERT_TRUE(Start(ini));
  ClickTab(1);
  for (const int index : {1, 2, 1}) Choose("cmbSQLServer", index);
  ClickTab(2);
  for (const int index : {1, 0}) Choose("cmbQueues", index);
  Find("lstQueueApplServers").setFocus();
  Press("Home Space Space");  // another instance
  SaveSuccessfully();
  EXPECT_TRUE(IniBytes() == Replaced(ini, first, first + "DefaultFormat=Text\r\n"))
      << "more was changed than the first section of its name";
  const std::string reason = "The file holds more of this section than the 10,000 bytes that could be read.";
  Delete("btnDeleteQueue", "queue Q");  // no instance may keep the name of a queue that is gone
  Save(SaveFailure("SQL:C", reason, "Q (removed)", "SQL:B, SQL:C", IniPath()));
}

TEST_F(SqlPageTest, KeepsItsListsOfMailServersRight) {
  Open(kInstance + kBare);
  ClickTab(0);
  Add("three");
  Replace("txtSenderEmail", "c@d");
  ClickTab(1);
  EXPECT_EQ(Entries("cmbPrimaryMailServer"), (Names{"one", "two", "three"}));
  EXPECT_EQ(Text("cmbPrimaryMailServer cmbSecondaryMailServer"), "one|two");
  ClickTab(0);
  Delete("btnDeleteMailSettings", "settings for server three");
  ClickTab(1);
  EXPECT_EQ(Entries("cmbSecondaryMailServer"), (Names{"one", "two"}));
  EXPECT_FALSE(IsModified());
  folder.Write("Service/HTMLStylesheets/new.css", "");
  Click("btnRefreshStylesheets btnRefreshPrimaryServer");
  EXPECT_EQ(Entries("cmbStylesheet").size(), 3u);
  EXPECT_EQ(Text(kLists), "blue.css|one|two|CONTINUE");
  EXPECT_FALSE(IsModified());
}

TEST_F(SqlPageTest, AddsAnInstanceThroughTheInstaller) {
  Open(kInstance + kAdmin + "SchedulerPassword=<\\_\r\n");
  ClickTab(2);
  AddQueue("Q");
  ClickTab(1);
  setup.note = "how the installer was connected";
  WillInstall("HOST9", "sales", "sa");
  Click("btnAddNewSqlServer");
  EXPECT_EQ(Text("lblSqlConnection"), setup.note);
  EXPECT_EQ(title, "New Sql Server Instance");
  EXPECT_EQ(setup.asked, "install HOST9 sa/pw sales");
  EXPECT_EQ(Entries("cmbSQLServer"), (Names{"HOST9", "A"}));
  EXPECT_EQ(Text(kTexts), "sa|pw|300|0||");
  EXPECT_EQ(Text("cmbSQLServer cmbStylesheet lblConfiguredDB"), "HOST9|Default.CSS|sales (sysadmin access) ");
  EXPECT_EQ(Checked(kOptions), "optSqlNative optText");
  EXPECT_EQ(Lines("lstQueueApplServers"), "A|HOST9");
  messages.WillShow(Faulty("sever HOST9", "Primary mail server must be provided"));
  Choose("cmbSQLServer", 1);
  EXPECT_EQ(Text("cmbSQLServer"), "HOST9");
  Choose("cmbPrimaryMailServer", 0);
  Delete("btnDeleteSqlSettings", "settings for server HOST9");
  EXPECT_EQ(Entries("cmbSQLServer"), Names{"A"});
  EXPECT_EQ(Lines("lstQueueApplServers"), "A");
  EXPECT_EQ(Text("lblSqlConnection"), "") << "another instance is shown";
  setup.succeeds = false;
  WillInstall("HOST8", "sales");
  Click("btnAddNewSqlServer");
  EXPECT_EQ(Entries("cmbSQLServer"), Names{"A"});
  setup.succeeds = true;
  std::filesystem::remove(folder / "Service/HTMLStylesheets/Default.CSS");
  Click("btnRefreshStylesheets");
  WillInstall("HOST7", "sales");
  Click("btnAddNewSqlServer");
  Choose("cmbPrimaryMailServer", 0);
  SaveSuccessfully();
  EXPECT_EQ(Stored("SQL:HOST7", "ConnectionType SqlUsername Stylesheet ConfiguredDB AllowTempTables"),
            "Trusted|||sales|0");
  EXPECT_EQ(IniBytes().find("Stylesheet=\r\n"), std::string::npos);
}

TEST_F(SqlPageTest, RefreshingStyleSheetsChoosesTheFirstWhereNoneIsChosen) {
  Open(kBare);
  Click("btnRefreshStylesheets");
  EXPECT_EQ(Text("cmbStylesheet"), Entries("cmbStylesheet")[0]);
}

TEST_F(SqlPageTest, ALoginTypedBeforeChoosingTrustedIsNotStored) {
  Open(kInstance);
  InDialog([](QDialog& dialog) {
    const DialogUser user(dialog);
    user.Click("optSqlNative");
    user.Paste("txtSqlUsername", "sa");
    user.Paste("txtSqlPassword", "pw");
    user.Click("optTrusted btnRefresh");
    EXPECT_EQ(user.Text("cmbDatabase"), "master") << "it is chosen though another comes first";
    user.Click("btnSetup");
  });
  Click("btnAddNewSqlServer");
  Choose("cmbPrimaryMailServer", 0);
  SaveSuccessfully();
  EXPECT_EQ(Stored("SQL:HOST1", "ConnectionType SqlUsername SqlPassword"), "Trusted||");
}

TEST_F(SqlPageTest, InstallsAgainWithTheLockedInstance) {
  Open(kInstance);
  WillInstall("");
  Click("btnConfigure");
  EXPECT_EQ(setup.asked, "install A sales/ master all") << "nothing stored allows temporary tables";
  Open(kInstance + "AllowTempTables=1\r\n");
  WillInstall("");
  Click("btnConfigure");
  EXPECT_EQ(title, "Sql Server Instance A");
  EXPECT_EQ(setup.asked, "install A sales/ master all temp");
  WillInstall("", "sales");
  Click("btnConfigure");
  EXPECT_EQ(Text("lblConfiguredDB"), "sales (public access) ");
  SaveSuccessfully();
  EXPECT_EQ(Stored("SQL:A", "ConfiguredDB AccessType AllowTempTables"), "sales|public|1");
}

}  // namespace
}  // namespace pellorin::test
