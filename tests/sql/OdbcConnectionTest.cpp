// The connection over the real driver.
#include <array>
#include <bit>

#include "platform/MachineName.h"
#include "sql/InstallScript.h"
#include "sql/OdbcDriver.h"
#include "sql/SendProcedure.h"
#include "tests/sql/SqlServerFixture.h"
#include "tests/support/TemporaryFolder.h"

namespace pellorin::test {
namespace {

using Names = std::vector<std::string>;

class OdbcConnectionTest : public SqlServerTest {
 protected:
  static std::string OpeningFailure(const std::string& at, const std::string& as, const std::string& with,
                                    OdbcConnection&& connection = OdbcConnection(SystemFiles())) {
    connection.ConnectionString = SqlLoginConnectionString(at, as, with);
    return SqlFailure([&] { connection.Open(); });
  }
};

TEST_F(OdbcConnectionTest, ListsAndSwitchesDatabases) {
  const auto connection = Open(Database());
  const Names names = connection->QueryColumn("select name from sysdatabases order by name");
  for (const std::string& name : {std::string("master"), Database()})
    EXPECT_EQ(std::count(names.begin(), names.end(), name), 1) << name;
  connection->SetDefaultDatabase(Database());
  EXPECT_EQ(connection->DefaultDatabase(), Database());
  const std::string failure = SqlFailure([&] { connection->SetDefaultDatabase("no_such_database"); });
  EXPECT_NE(failure.find("no_such_database"), std::string::npos) << failure;
  EXPECT_EQ(failure.find("[FreeTDS]"), std::string::npos) << failure;
  EXPECT_EQ(connection->DefaultDatabase(), Database());
  connection->Close();
  EXPECT_EQ(SqlFailure([&] { connection->Execute("select 1"); }), "The connection is not open.");
}

TEST_F(OdbcConnectionTest, SaysWhyItDoesNotOpen) {
  const std::string refusal = OpeningFailure(server, user, "wrong");
  EXPECT_EQ(refusal, tds ? "Login failed for user '" + user + "'." : refusal);
  EXPECT_NE(refusal, "no failure");
  EXPECT_EQ(OpeningFailure(server, user, "se;cret"),
            "A server name, user name or password that holds \";\" cannot be used to connect.");
  EXPECT_EQ(OpeningFailure(server, "", password), "A SQL login needs a user name.");
  EXPECT_EQ(OpeningFailure("127.0.0.1,1", user, password),
            "Port 1 of 127.0.0.1 cannot be reached (Connection refused). Please check that SQL Server runs "
            "there, listens on this port and allows TCP/IP connections.");
  for (const char* unknown : {"no-such-host.invalid", "no-such-host.invalid\\SALES"}) {
    const std::string failure = OpeningFailure(unknown, user, password);
    EXPECT_TRUE(failure.starts_with("Unknown host no-such-host.invalid (")) << failure;
  }
  const std::string missing =
      OpeningFailure(server, user, password, OdbcConnection(SystemFiles(), "no such driver"));
  EXPECT_NE(missing.find("PELLORIN_ODBC_DRIVER"), std::string::npos);
}

TEST(DriverText, SpeaksEachDriversWords) {
  const ConnectionSettings login{"", "u", "p", "", false};
  const std::string freeTds =
      "SERVER=h;PORT=5000;TDS_Version=7.4;ClientCharset=UTF-8;Timeout=30;Encryption=require;UID={u};PWD={p};";
  const std::string microsofts = "SERVER=tcp:h,5000;Encrypt=yes;TrustServerCertificate=yes;UID={u};PWD={p};";
  for (const auto& [driver, text] : {std::pair("FreeTDS", freeTds),
                                     {"/usr/lib/libtdsodbc.so", freeTds},
                                     {"ODBC Driver 18 for SQL Server", microsofts},
                                     {"/opt/microsoft/lib/libmsodbcsql-18.so", microsofts}})
    EXPECT_EQ(DriverText(driver, login, {"h", 5000, true}, std::chrono::seconds(30)),
              "DRIVER={" + std::string(driver) + "};" + text);
  const auto inClear = [](const char* driver) {
    return DriverText(driver, {"", "", "", "master", true}, {"h", 1, false}, std::chrono::seconds(1));
  };
  EXPECT_TRUE(inClear("FreeTDS").ends_with("Timeout=1;Trusted_Connection=Yes;DATABASE=master;"));
  EXPECT_NE(inClear("ODBC Driver 18 for SQL Server").find(";Encrypt=no;"), std::string::npos);
}

TEST(SecuritySentence, SaysWhatWasReachedAndWhatCrossedTheNetwork) {
  const ConnectionSettings trusted{"DB\\SALES", "", "", "master", true},
      login{"DB\\SALES", "u", "p", "", false};
  const std::string reached = "The connection to DB\\SALES (db.example, port 1433, driver FreeTDS) was ";
  EXPECT_EQ(SecuritySentence("FreeTDS", login, {"db.example", 1433, true}),
            reached + "encrypted, server not verified.");
  EXPECT_EQ(SecuritySentence("/usr/lib/FreeTDS", trusted, {"db.example", 1433, false}),
            reached + "not encrypted: queries crossed the network in clear.");
}

TEST_F(OdbcConnectionTest, KeepsOrTakesBackATransaction) {
  const std::string create = "CREATE PROCEDURE sp_sendPLN AS SELECT 1";
  for (const std::string end : {"commit", "roll back", "disconnect"}) {
    const auto connection = Open(Database());
    connection->BeginTransaction();
    connection->Execute(create);
    if (end == "commit") connection->CommitTransaction();
    if (end == "roll back") connection->RollBackTransaction();
    connection->Close();
    EXPECT_EQ(Procedure(), end == "commit" ? create : "") << end;
    TearDown();  // refused while a transaction is open
  }
}

TEST_F(OdbcConnectionTest, SendsAScriptUnchanged) {
  std::string script =
      "-- {d 'x'} ? \u00E4\u20AC\u4E2D\U0001F600\r\n/* ? {call} */\r\nCREATE PROCEDURE sp_sendPLN AS\r\n";
  script += "SELECT N'? {fn now()} \u00E4\u20AC'\r\n";
  while (script.size() < 200000) script += "-- a line of comment with ? and { and } in it\r\n";
  Do(Database(), script);
  EXPECT_EQ(Procedure(), script);
  if (tds) {
    EXPECT_EQ(tds->Batches().at(tds->Batches().size() - 3), script);
  }
}

TEST_F(OdbcConnectionTest, CallsTheProcedureByNamedTexts) {
  Do(Database(), ReadScriptFile(SystemFiles(), PROJECT_FOLDER "/install", kInstallScript));
  const auto connection = Open(Database());
  const ProbeMail mail{"a@example.com", std::string(3999, 'x') + "\u20AC", "It's \u00E4\u20AC\u4E2D"};
  SendByParameters(*connection, mail);
  SendToQueue(*connection, {"b@example.com", "line\r\nline", "s"}, "Night");
  if (tds) {
    EXPECT_EQ(tds->LastCall(),
              (Names{"exec sp_sendPLN @recipients=@P1,@message=@P2,@query=@P3,@attachments=@P4,"
                     "@copy_recipients=@P5,@blind_copy_recipients=@P6,@subject=@P7",
                     mail.recipients, mail.message, "", "", "", "", mail.subject}));
    EXPECT_EQ(tds->Batches().back(),
              "exec sp_sendPLN @recipients='b@example.com',@message='line\r\nline',@subject='s',"
              "@queue='Night'");
  }
  EXPECT_EQ(SqlFailure([&] {
              SendByParameters(*connection, {"a", mail.message + "y", "s"});
            }),
            "The value of @message is longer than 4000 characters.");
  EXPECT_NE(SqlFailure([&] { SendToQueue(*connection, {"o'x", "m", "s"}, "Q"); }), "no failure");
  EXPECT_EQ(SqlFailure([&] {
              SendToQueue(*connection, {"o'x", "why?", "s"}, "Q");
            }),
            "The driver gave no reason. Is there a question mark outside the strings, as after an "
            "unpaired quote?");
}

// Servers may fold letters in names or refuse signs: one that does fails here and nowhere else. The files of
// a real server's database are named after it, and cannot be named in all ways.
TEST_F(OdbcConnectionTest, KeepsAnOddDatabaseName) {
  databaseName = std::string("Pellorin Test's ") + (IsReal() ? "" : "\"") + "[x] \u00C4" + GenerateGUID();
  EXPECT_EQ(Open(Database())->DefaultDatabase(), databaseName);
  Do(databaseName, "CREATE PROCEDURE sp_sendPLN AS SELECT 1");
  EXPECT_EQ(Procedure(), "CREATE PROCEDURE sp_sendPLN AS SELECT 1");
}

// What only a server that does as it is told can show.
class UnreliableServer : public OdbcConnectionTest {
 protected:
  void SetUp() override {
    SqlServerTest::SetUp();
    if (IsReal()) GTEST_SKIP() << "needs a server that fails on demand";
  }
  std::string Silence() const {
    return "127.0.0.1 did not answer on port " + std::to_string(tds->Port()) +
           " in time. Please check the server's name and port, and that no firewall keeps it from answering.";
  }
};

TEST_F(UnreliableServer, IsGivenUpAfterTheTimeOut) {
  for (int step = 1; step <= kOpening; ++step) {
    tds->AtStep(tds->Steps() + step, Hook::Silent());
    const auto connection = Closed();
    connection->ConnectionTimeout = std::chrono::seconds(1);
    EXPECT_EQ(SqlFailure([&] { connection->Open(); }), step == 1 ? Silence() : "Timeout expired") << step;
  }
  const auto calling = Closed();  // the tests of the installer fall silent at the other operations
  calling->CommandTimeout = std::chrono::seconds(1);
  calling->Open();
  tds->AtStep(tds->Steps() + 1, Hook::Silent());
  EXPECT_NE(SqlFailure([&] { SendByParameters(*calling, {"a", "m", "s"}); }), "no failure");
}

TEST_F(UnreliableServer, MayFailLateOrDropTheConnection) {
  const auto late = Open(Database());
  tds->AtStep(tds->Steps() + 1, Hook::ErrorAfterResult(50000, "Too late."));
  EXPECT_EQ(SqlFailure([&] { late->QueryColumn("select db_name()"); }), "Too late.");
  tds->AtStep(tds->Steps() + 1, Hook::ErrorAfterResult(50000, "Too late."));
  EXPECT_EQ(SqlFailure([&] { late->Execute("CREATE PROCEDURE sp_sendPLN AS SELECT 1"); }), "Too late.");
  for (int step = 2; step <= kOpening; ++step) {
    tds->AtStep(tds->Steps() + step, Hook::Drop());
    const auto dropped = Closed();
    EXPECT_EQ(SqlFailure([&] { dropped->Open(); }), "Unexpected EOF from the server") << step;
    EXPECT_TRUE(dropped->SecurityNote().ends_with("the password may have crossed the network in clear."));
  }
}

// An answer to the question whether the server encrypts: option 1, placed at `place`, and its value.
std::string Reply(char place, char value, char size = 15) {
  return {4, 1, 0, size, 0, 0, 1, 0, 1, 0, place, 0, 1, '\xFF', value};
}

TEST_F(UnreliableServer, IsToldByItsFirstAnswer) {
  const std::string port = std::to_string(tds->Port());
  const std::string foreign = "The program that answers on port " + port +
                              " of 127.0.0.1 is not a SQL Server. Please check the server's name and port.";
  const std::string inTwoPackets = std::string("\x04\0\0\x09\0\0\0\0\xFF\x04\x01\0\x08\0\0\0\0", 17);
  for (const auto& [hook, failure] :
       {std::pair(Hook::Bytes("HTTP/1.1 400 Bad Request"), foreign),
        {Hook::Bytes(Reply(6, 2, 7)), foreign},  // shorter than its own header
        {Hook::Bytes(Reply(7, 2)), foreign},     // the value lies beyond the end
        {Hook::Bytes(Reply(6, 9)), foreign},     // no such kind of encryption
        {Hook::Bytes(Reply(6, 2)), "no failure"},
        {Hook::Bytes(inTwoPackets), "no failure"},
        {Hook::Bytes(Reply(6, 2).substr(0, 5)), Silence()},
        {Hook::Drop(), "127.0.0.1 closed the connection on port " + port +
                           " without an answer. Please check that a SQL Server listens on this port."}}) {
    tds->AtStep(tds->Steps() + 1, hook);
    const auto connection = Closed();
    connection->ConnectionTimeout = std::chrono::seconds(1);
    EXPECT_EQ(SqlFailure([&] { connection->Open(); }), failure) << ::testing::PrintToString(hook.text);
  }
}

TEST_F(UnreliableServer, GetsNothingInClearWhenItOffersTls) {
  for (int step = 1; step <= 2; ++step) tds->AtStep(step, Hook::Bytes(Reply(6, 1)));
  EXPECT_EQ(OpeningFailure(server, user, password),
            "Unable to connect to data source\r\nThe server offers TLS, so the connection was tried with "
            "encryption only. Please check the server's TLS settings.");
  EXPECT_EQ(tds->Steps(), 3) << "more came than the question, the driver's question and its handshake";
  EXPECT_TRUE(tds->Users().empty());
  for (const auto& [required, failure] :
       {std::pair("require",
                  "127.0.0.1 does not offer encryption, and PELLORIN_SQL_ENCRYPTION requires it. Please "
                  "enable TLS on the server, or unset that variable."),
        {"requre", "PELLORIN_SQL_ENCRYPTION is \"requre\". Please set it to \"require\", or not at all."}}) {
    ::setenv("PELLORIN_SQL_ENCRYPTION", required, 1);
    EXPECT_EQ(OpeningFailure(server, user, password), failure);
    ::unsetenv("PELLORIN_SQL_ENCRYPTION");
    EXPECT_TRUE(tds->Users().empty());
  }
}

TEST_F(UnreliableServer, IsReachedByAllFormsOfItsNameAndWithAnyPassword) {
  const std::string port = "," + std::to_string(tds->Port());
  for (const char* host : {"127.0.0.1", "tcp:127.0.0.1", "TCP:loc\u00AAlhost", ".", "(local)", ""})
    EXPECT_EQ(OpeningFailure(host + port, user, password), "no failure") << host;
  for (const char* each : {"", "{", "}", "{x}}", "}}", " p ", "a=b=", "'q'", "\"q\"", "p\\w", "\u4E2D"})
    for (const char* name : {"sa", "a b", "u{x}", "{", "{x", "{x}", "x}", "}", "it's", "x=y"}) {
      tds->AddLogin(name, each);
      EXPECT_EQ(OpeningFailure(server, name, each), "no failure") << name << " " << each;
      EXPECT_EQ(tds->Users().back(), name);
    }
}

TEST_F(UnreliableServer, IsFoundByTheNameOfItsInstance) {
  const auto open = [&](const std::string& name, int browserPort) {
    OdbcConnection connection(SystemFiles(), DefaultSqlDriver(), static_cast<std::uint16_t>(browserPort));
    connection.ConnectionTimeout = std::chrono::seconds(2);
    return OpeningFailure(name, user, password, std::move(connection));
  };
  EXPECT_EQ(open("127.0.0.1\\sales", tds->BrowserPort()), "no failure");
  EXPECT_EQ(tds->BrowserQuestions(), Names{std::string("\x04sales\0", 7)});
  const std::string none =
      "The SQL Server Browser service of 127.0.0.1 (UDP port 1434) gave no answer about instance ";
  EXPECT_EQ(open("127.0.0.1\\OTHER", tds->BrowserPort()),
            none + "OTHER. Please check the name, or give the port, as in 127.0.0.1,1433.");
  EXPECT_TRUE(open("127.0.0.1\\SALES", 1).starts_with(none));  // nobody listens there
}

std::string TrustedFailure(const std::string& at) {
  OdbcConnection connection(SystemFiles());
  connection.ConnectionString = TrustedConnectionString(at);
  return SqlFailure([&] { connection.Open(); });
}

TEST(TrustedConnection, SaysWhenNoTicketIsValid) {
  TdsServer server;
  const TemporaryFolder folder;
  ::setenv("KRB5CCNAME", ("FILE:" + folder / "tickets").c_str(), 1);
  const auto tickets = [](char end) {  // one, all zeros but for four bytes: 1 is in 1970, 255 in 2106
    return "\x05\x04" + std::string(52, '\0') + std::string(4, end) + std::string(25, '\0');
  };
  const std::string reached = "127.1," + std::to_string(server.Port());  // not this machine by its name
  const std::string text = "Unable to connect to data source", hint = text + "\r\nno Kerberos ticket (kinit)";
  EXPECT_EQ(TrustedFailure(reached), hint) << "there is no file";
  server.AtStep(server.Steps() + 2, Hook::Drop());
  EXPECT_EQ(TrustedFailure(reached), "Unexpected EOF from the server");
  for (const auto& [bytes, expected] :
       {std::pair(tickets('\1'), hint), {tickets('\xFF'), text}, {tickets('\1').substr(0, 80), text}}) {
    folder.Write("tickets", bytes);
    EXPECT_EQ(TrustedFailure(reached), expected) << ::testing::PrintToString(bytes);
    EXPECT_EQ(TrustedFailure("no-such-host.invalid").find("kinit"), std::string::npos);
  }
  folder.Write("tickets", tickets('\xFF'));
  for (int step = 1; step <= 2; ++step) server.AtStep(server.Steps() + step, Hook::Bytes(Reply(6, 1)));
  EXPECT_TRUE(TrustedFailure(reached).starts_with(text + "\r\nThe server offers TLS, "));
  ::unsetenv("KRB5CCNAME");
}

TEST(TrustedConnection, GoesToThisMachineByItsName) {
  for (const char* server : {".,1", "localhost,1", "LOCALHOST\\SALES,1", "127.0.0.1,1"}) {
    const std::string failure = TrustedFailure(server);
    EXPECT_NE(failure.find(" " + GetHostName() + " "), std::string::npos) << server << ": " << failure;
  }
}

}  // namespace
}  // namespace pellorin::test
