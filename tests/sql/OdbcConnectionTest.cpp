// The connection over the real driver.
#include "sql/InstallScript.h"
#include "sql/SendProcedure.h"
#include "tests/sql/SqlServerFixture.h"

namespace pellorin::test {
namespace {

using Names = std::vector<std::string>;

class OdbcConnectionTest : public SqlServerTest {};

TEST_F(OdbcConnectionTest, ListsAndSwitchesDatabases) {
  const auto connection = Closed();
  connection->Open();
  const Names names = connection->QueryColumn("select name from sysdatabases order by name");
  for (const std::string& name : {std::string("master"), database})
    EXPECT_EQ(std::count(names.begin(), names.end(), name), 1) << name;
  EXPECT_TRUE(connection
                  ->QueryColumn("select definition from sys.sql_modules where object_id = "
                                "object_id('sp_sendPLN')")
                  .empty());
  connection->SetDefaultDatabase(database);
  EXPECT_EQ(connection->DefaultDatabase(), database);
  const std::string failure = SqlFailure([&] { connection->SetDefaultDatabase("no such database"); });
  EXPECT_NE(failure.find("no such database"), std::string::npos) << failure;
  EXPECT_EQ(failure.find("[FreeTDS]"), std::string::npos) << failure;
  EXPECT_EQ(connection->DefaultDatabase(), database);
  connection->Close();
  EXPECT_EQ(SqlFailure([&] { connection->Execute("select 1"); }), "The connection is not open.");
}

TEST_F(OdbcConnectionTest, SaysWhyItDoesNotOpen) {
  const auto refused = Closed();
  refused->ConnectionString = SqlLoginConnectionString(server, user, "wrong");
  const std::string refusal = SqlFailure([&] { refused->Open(); });
  EXPECT_NE(refusal, "no failure");
  if (tds) {
    EXPECT_EQ(refusal, "Login failed for user '" + user + "'.");
  }
  const auto broken = Closed();
  broken->ConnectionString = SqlLoginConnectionString(server, user, "se;cret");
  EXPECT_EQ(SqlFailure([&] { broken->Open(); }),
            "A server name, user name or password that holds \";\" cannot be used to connect.");
  const auto down = Closed();
  down->ConnectionString = SqlLoginConnectionString("127.0.0.1,1", user, password);
  const std::string failure = SqlFailure([&] { down->Open(); });
  EXPECT_NE(failure, "no failure");
  EXPECT_EQ(failure.find(password), std::string::npos);
  const auto unknown = Closed();
  unknown->ConnectionString = SqlLoginConnectionString("no-such-host.invalid", user, password);
  EXPECT_NE(SqlFailure([&] { unknown->Open(); }), "no failure");
}

TEST_F(OdbcConnectionTest, OpensWithTheProtocolNamed) {
  const auto connection = Closed();
  connection->ConnectionString = SqlLoginConnectionString("tcp:" + server, user, password);
  EXPECT_EQ(SqlFailure([&] { connection->Open(); }), "no failure");
  connection->ConnectionString = SqlLoginConnectionString(server, "", password);
  EXPECT_EQ(SqlFailure([&] { connection->Open(); }), "A SQL login needs a user name.");
  OdbcConnection missing("no such driver");
  missing.ConnectionString = SqlLoginConnectionString(server, user, password);
  EXPECT_NE(SqlFailure([&] { missing.Open(); }).find("PELLORIN_ODBC_DRIVER"), std::string::npos);
}

TEST(DriverText, SpeaksEachDriversWords) {
  const ConnectionSettings login{"", "u", "p", "", false};
  const std::string freeTds =
      "SERVER=h;PORT=5000;TDS_Version=7.4;ClientCharset=UTF-8;Timeout=30;UID={u};PWD={p};";
  const std::string microsofts = "SERVER=tcp:h,5000;TrustServerCertificate=yes;UID={u};PWD={p};";
  for (const auto& [driver, text] : {std::pair("FreeTDS", freeTds),
                                     {"/usr/lib/libtdsodbc.so", freeTds},
                                     {"ODBC Driver 18 for SQL Server", microsofts},
                                     {"/opt/microsoft/lib/libmsodbcsql-18.so", microsofts}})
    EXPECT_EQ(OdbcConnection::DriverText(driver, login, "h", 5000, std::chrono::seconds(30)),
              "DRIVER={" + std::string(driver) + "};" + text);
  EXPECT_TRUE(
      OdbcConnection::DriverText("FreeTDS", {"", "", "", "master", true}, "h", 1, std::chrono::seconds(1))
          .ends_with("Timeout=1;Trusted_Connection=Yes;DATABASE=master;"));
}

TEST_F(OdbcConnectionTest, KeepsOrTakesBackATransaction) {
  const std::string create = "CREATE PROCEDURE sp_sendPLN AS SELECT 1";
  for (const char* end : {"commit", "roll back", "disconnect"}) {
    const auto connection = Open(database);
    connection->BeginTransaction();
    connection->Execute(create);
    EXPECT_EQ(
        connection->QueryColumn("select count(*) from sysobjects where xtype='P' and name='sp_sendPLN'"),
        Names{"1"});
    if (std::string(end) == "commit") connection->CommitTransaction();
    if (std::string(end) == "roll back") connection->RollBackTransaction();
    connection->Close();
    EXPECT_EQ(Procedure(), std::string(end) == "commit" ? create : "") << end;
    if (std::string(end) == "commit") {
      TearDown();
      SetUp();
    }
  }
}

TEST_F(OdbcConnectionTest, SendsAScriptUnchanged) {
  std::string script =
      "-- {d 'x'} ? \u00E4\u20AC\u4E2D\U0001F600\r\n/* ? {call} */\r\nCREATE PROCEDURE sp_sendPLN AS\r\n";
  script += "SELECT N'? {fn now()} \u00E4\u20AC'\r\n";
  while (script.size() < 200000) script += "-- a line of comment with ? and { and } in it\r\n";
  Do(database, script);
  EXPECT_EQ(Procedure(), script);
  if (tds) {
    EXPECT_EQ(tds->Batches().at(tds->Batches().size() - 3), script);
  }
}

TEST_F(OdbcConnectionTest, CallsTheProcedureByNamedTexts) {
  const std::string longest = std::string(3999, 'x') + "\u20AC";
  Do(database, ReadScriptFile(SystemFiles(), TEST_DATA "/../../install", kInstallScript));
  const TestMail mail{"a@example.com", longest, "It's \u00E4\u20AC\u4E2D"};
  SendByParameters(*Open(database), mail);
  SendToQueue(*Open(database), {"b@example.com", "line\r\nline", "s"}, "Night");
  const auto column = [&](const std::string& name) {
    return Ask("select " + name + " from PellorinStandInMail order by id");
  };
  EXPECT_EQ(column("recipients"), (Names{"a@example.com", "b@example.com"}));
  EXPECT_EQ(column("message"), (Names{longest, "line\r\nline"}));
  EXPECT_EQ(column("subject"), (Names{mail.subject, "s"}));
  EXPECT_EQ(column("query"), (Names{"", ""}));
  EXPECT_EQ(column("queue"), (Names{"", "Night"}));
  EXPECT_EQ(SqlFailure([&] {
              SendByParameters(*Open(database), {"", "m", "s"});
            }),
            "No recipients were given.");
  EXPECT_EQ(SqlFailure([&] {
              SendByParameters(*Open(database), {"a", longest + "y", "s"});
            }),
            "The value of @message is longer than 4000 characters.");
  EXPECT_NE(SqlFailure([&] { SendToQueue(*Open(database), {"o'x", "m", "s"}, "Q"); }), "no failure");
  EXPECT_EQ(SqlFailure([&] {
              SendToQueue(*Open(database), {"o'x", "why?", "s"}, "Q");
            }),
            "The driver gave no reason. Does a question mark stand outside the strings, as behind an "
            "unpaired quote?");
  if (!tds) return;
  EXPECT_NE(SqlFailure([&] { SendByParameters(*Open("master"), mail); }), "no failure");
  const auto call = tds->Calls().front();
  EXPECT_EQ(call.statement,
            "exec sp_sendPLN @recipients=@P1,@message=@P2,@query=@P3,@attachments=@P4,"
            "@copy_recipients=@P5,@blind_copy_recipients=@P6,@subject=@P7");
}

// What only a server that does as it is told can show.
class UnreliableServer : public SqlServerTest {
 protected:
  void SetUp() override {
    if (IsReal()) GTEST_SKIP() << "needs a server that fails on demand";
    SqlServerTest::SetUp();
  }
  void TearDown() override {
    if (!IsReal()) SqlServerTest::TearDown();
  }
};

TEST_F(UnreliableServer, IsGivenUpAfterTheTimeOut) {
  for (int step = 1; step <= 2; ++step) {
    tds->AtStep(tds->Steps() + step, Hook::Silent());
    const auto connection = Closed();
    connection->ConnectionTimeout = std::chrono::seconds(1);
    EXPECT_EQ(SqlFailure([&] { connection->Open(); }), "Timeout expired") << step;
  }
  const auto each = [&](const char* name, auto operation) {
    const auto connection = Closed();
    connection->CommandTimeout = std::chrono::seconds(1);
    connection->Open();
    tds->AtStep(tds->Steps() + 1, Hook::Silent());
    EXPECT_NE(SqlFailure([&] { operation(*connection); }), "no failure") << name;
  };
  each("begin", [](SqlConnection& connection) { connection.BeginTransaction(); });
  each("switch", [](SqlConnection& connection) { connection.SetDefaultDatabase("master"); });
  each("query", [](SqlConnection& connection) { connection.QueryColumn("select db_name()"); });
  each("call", [](SqlConnection& connection) { SendByParameters(connection, {"a", "m", "s"}); });
}

TEST_F(UnreliableServer, MayBeSlowDropTheConnectionOrFailLate) {
  const auto slow = Open(database);
  tds->AtStep(tds->Steps() + 1, Hook::Delay(std::chrono::milliseconds(300)));
  EXPECT_EQ(slow->DefaultDatabase(), database);
  tds->AtStep(tds->Steps() + 1, Hook::ErrorAfterResult(50000, "Too late."));
  EXPECT_EQ(SqlFailure([&] { slow->QueryColumn("select db_name()"); }), "Too late.");
  tds->AtStep(tds->Steps() + 1, Hook::ErrorAfterResult(50000, "Too late."));
  EXPECT_EQ(SqlFailure([&] { slow->Execute("CREATE PROCEDURE sp_sendPLN AS SELECT 1"); }), "Too late.");
  tds->AtStep(tds->Steps() + 1, Hook::Drop());
  EXPECT_NE(SqlFailure([&] { slow->DefaultDatabase(); }), "no failure");
  for (int step = 1; step <= 2; ++step) {
    tds->AtStep(tds->Steps() + step, Hook::Drop());
    EXPECT_NE(SqlFailure([&] { Closed()->Open(); }), "no failure") << step;
  }
}

TEST_F(UnreliableServer, IsReachedByAllFormsOfItsNameAndWithAnyPassword) {
  const std::string port = "," + std::to_string(tds->Port());
  for (const char* host : {"127.0.0.1", "tcp:127.0.0.1", "TCP:localhost", ".", "(local)", ""}) {
    const auto connection = Closed();
    connection->ConnectionString = SqlLoginConnectionString(host + port, user, password);
    EXPECT_EQ(SqlFailure([&] { connection->Open(); }), "no failure") << host;
  }
  for (const char* each : {"", "{", "}", "{x}}", "}}", " p ", "a=b=", "'q'", "\"q\"", "p\\w", "\u4E2D"})
    for (const char* name : {"sa", "a b", "u{x}", "{", "{x", "{x}", "x}", "}", "it's", "x=y"}) {
      tds->AddLogin(name, each);
      const auto connection = Closed();
      connection->ConnectionString = SqlLoginConnectionString(server, name, each);
      EXPECT_EQ(SqlFailure([&] { connection->Open(); }), "no failure") << name << " " << each;
      EXPECT_EQ(tds->Logins().back().user, name);
    }
}

TEST_F(UnreliableServer, IsFoundByTheNameOfItsInstance) {
  const BrowserStub browser("SALES", tds->Port());
  const auto open = [&](const std::string& name, std::uint16_t port) {
    OdbcConnection connection(OdbcConnection::DefaultDriver(), port);
    connection.ConnectionTimeout = std::chrono::seconds(2);
    connection.ConnectionString = SqlLoginConnectionString(name, user, password);
    return SqlFailure([&] { connection.Open(); });
  };
  EXPECT_EQ(open("127.0.0.1\\sales", browser.Port()), "no failure");
  EXPECT_EQ(browser.Questions(), Names{std::string("\x04sales\0", 7)});
  const std::string none =
      "The SQL Server Browser service of 127.0.0.1 (UDP port 1434) gave no answer about instance ";
  EXPECT_EQ(open("127.0.0.1\\OTHER", browser.Port()),
            none + "OTHER. Please check the name, or give the port, as in 127.0.0.1,1433.");
  EXPECT_TRUE(open("127.0.0.1\\SALES", 1).starts_with(none));  // nobody listens there
}

TEST(TrustedConnection, SaysThatThereIsNoTicket) {
  TdsServer server;
  ::setenv("KRB5CCNAME", "FILE:/no/such/file", 1);
  OdbcConnection connection;
  connection.ConnectionString = TrustedConnectionString("127.0.0.1," + std::to_string(server.Port()));
  const std::string failure = SqlFailure([&] { connection.Open(); });
  ::unsetenv("KRB5CCNAME");
  EXPECT_TRUE(failure.ends_with("\r\nno Kerberos ticket (kinit)")) << failure;
}

}  // namespace
}  // namespace pellorin::test
