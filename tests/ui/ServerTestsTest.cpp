// The tests of a SQL Server and of a queue against the server that the suite runs with: what arrives in the
// table of the stand-in procedure.
#include "config/DateTimeText.h"
#include "platform/MachineName.h"
#include "sql/InstallScript.h"
#include "tests/sql/SqlServerFixture.h"
#include "tests/support/RecordingMessages.h"
#include "tests/support/TemporaryFolder.h"
#include "ui/QueueTest.h"
#include "ui/SqlServerTest.h"

namespace pellorin::test {
namespace {

using Names = std::vector<std::string>;

class ServerTests : public SqlServerTest, private MailComponent {
 protected:
  ServerTests() { database = "Pellorin tests " + GenerateGUID(); }  // a quote would break the queue's command
  void SetUp() override {
    SqlServerTest::SetUp();
    folder.Write("QUEUEDefinitions/defaultQUEUE.xml", "<queue/>");
    session.ReplaceDocument(std::make_unique<Ini>(SystemFiles(), folder.Path(), LocaleConventions()));
    Ini& document = *session.Document();
    document.Load("Pellorin.ini");
    Section& instance = document.Add("SQL:" + server, SectionType::Sql);
    instance.SetValue("ConfiguredDB", database);
    instance.SetValue("PrimaryMailServer", "one");
    session.SetCurrent(SectionType::Sql, &instance);
    session.SetCurrent(SectionType::Queue, &document.AddQueue("Q1"));
    Section& mail = document.Add("MAIL:one", SectionType::Mail);
    for (const auto& [key, value] : {std::pair("SenderEmail", "a@b"), {"ConnectionTimeout", "0"}})
      mail.SetValue(key, value);
    session.SetCurrent(SectionType::Mail, &mail);
    for (const char* key : {"SchedulerUsername", "SchedulerPassword"})
      document.AdminSection().SetValue(key, "x");
    for (const auto& [key, value] : {std::pair("every", "1"), {"occurstype", "once"}, {"occursonce", "8:00"}})
      session.PersistQueueSetting(key, value);
    document.Save();
  }
  void TearDown() override {
    SqlServerTest::TearDown();
    messages.ExpectNoMore();
  }
  void RunSqlTest(const Message& end) {
    messages.WillAsk("Email Address", "Please enter an email address to send the test email to",
                     "a@example.com");
    messages.WillShow(end);
    pellorin::SqlServerTest(services, {false, user, password}).Run();
  }
  void RunQueueTest(const std::string& address) {
    messages.WillAsk("Email Address", "Please enter the email address for an email to be queued.", address);
    messages.WillShowSome();
    QueueTest(services, {false, user, password}).Run();
  }
  static Message Success(const std::string& text) {
    return {.text = text, .title = "Test Succeeded", .icon = MessageIcon::Information};
  }
  std::string Body(const std::string& first) const {
    return first + "SQL Instance Name: " + server + "\r\nServer Name: " + GetMachineName() +
           "\r\nDefault Database: " + database + "\r\nPellorin Version: 7.8.9\r\nSQL Connection: " + user +
           "\r\nMail Server: one\r\nSend On: ";
  }

  TemporaryFolder folder;
  RecordingMessages messages;
  ConfigurationSession session;
  TestServices services{session, messages, *this, [] { return std::make_unique<OdbcConnection>(); },
                        [] { return std::make_unique<TestWork>(); }};

 private:
  std::string InstallFolder() override { return {}; }
  std::string Version() override { return "7.8.9"; }
  void SetWatch(Watch /*watch*/) override {}
  bool Send(const MailArguments& /*arguments*/) override { return false; }
  int LastErrorNumber() override { return 0; }
  std::string LastErrorSource() override { return {}; }
  std::string LastErrorDescription() override { return {}; }
};

// Notes how it should have been opened, and opens with the test's login.
class RedirectedConnection : public OdbcConnection {
 public:
  RedirectedConnection(std::string& asked, std::string instead)
      : asked_(asked), instead_(std::move(instead)) {}
  void Open() override {
    asked_ = std::exchange(ConnectionString, instead_);
    OdbcConnection::Open();
  }

 private:
  std::string& asked_;
  std::string instead_;
};

TEST_F(ServerTests, ATrustedConnectionIsAskedForAndNamed) {
  Do(database, ReadScriptFile(SystemFiles(), TEST_DATA "/../../install", kInstallScript));
  std::string asked;
  services.connect = [&] {
    return std::make_unique<RedirectedConnection>(asked, SqlLoginConnectionString(server, user, password));
  };
  messages.WillAsk("Email Address", "Please enter an email address to send the test email to", "a");
  messages.WillShow(Success("Email Sent"));
  pellorin::SqlServerTest(services, {true, "unused", ""}).Run();
  EXPECT_EQ(asked, TrustedConnectionString(server));
  messages.WillAsk("Email Address", "Please enter the email address for an email to be queued.", "b");
  messages.WillShowSome();
  QueueTest(services, {true, "unused", ""}).Run();
  EXPECT_EQ(asked, TrustedConnectionString(server));
  for (const std::string& message : Ask("select message from PellorinStandInMail order by id"))
    EXPECT_NE(message.find("\r\nSQL Connection: Trusted\r\n"), std::string::npos) << message;
}

TEST_F(ServerTests, MailArrivesAsItIsDescribed) {
  const auto column = [&](const std::string& name) {
    return Ask("select " + name + " from PellorinStandInMail order by id");
  };
  if (tds) RunSqlTest(Warning("Test Failed", "Test Failed: Could not find stored procedure 'sp_sendPLN'."));
  Do(database, ReadScriptFile(SystemFiles(), TEST_DATA "/../../install", kInstallScript));
  RunSqlTest(Success("Email Sent"));
  RunQueueTest("b@example.com");
  EXPECT_EQ(messages.Last().title, "Test Succeeded");
  RunQueueTest("o'x");
  EXPECT_EQ(messages.Last().title, "Test Failed");
  EXPECT_EQ(column("recipients"), (Names{"a@example.com", "b@example.com"}));
  EXPECT_EQ(column("subject"),
            (Names{"Pellorin: Test Email from SQL Server", "Pellorin: Queued Email Test"}));
  EXPECT_EQ(column("queue"), (Names{"", "Q1"}));
  EXPECT_EQ(column("query"), (Names{"", ""}));
  const Names firstLines = {"This is a test email generated by Pellorin:\r\n\r\n",
                            "This is a queued test email generated by Pellorin:\r\n\r\nQueue Name: Q1\r\n"};
  const Names sent = column("message");
  for (std::size_t index = 0; index < 2; ++index) {
    const std::string body = Body(firstLines[index]);
    EXPECT_EQ(sent.at(index).substr(0, body.size()), body);
    EXPECT_TRUE(IsDate(sent.at(index).substr(body.size()), LocaleConventions())) << sent[index];
  }
}

}  // namespace
}  // namespace pellorin::test
