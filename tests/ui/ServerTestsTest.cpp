// The tests of a SQL Server and of a queue against the server that the suite runs with: what arrives in the
// table of the stand-in procedure.
#include "sql/InstallScript.h"
#include "tests/sql/SqlServerFixture.h"
#include "tests/support/RecordingMessages.h"
#include "tests/support/TemporaryFolder.h"
#include "ui/QueueTest.h"
#include "ui/SqlServerTest.h"

namespace pellorin::test {
namespace {

using Names = std::vector<std::string>;

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

class ServerTests : public SqlServerTest, private MailComponent {
 protected:
  void SetUp() override {
    SqlServerTest::SetUp();
    folder.Write("QUEUEDefinitions/defaultQUEUE.xml", "<queue/>");
    session.ReplaceDocument(std::make_unique<Ini>(SystemFiles(), folder.Path(), LocaleConventions()));
    Ini& document = *session.Document();
    document.Load("Pellorin.ini");
    Section& instance = document.Add("SQL:" + server, SectionType::Sql);
    instance.SetValue("ConfiguredDB", Database());
    session.SetCurrent(SectionType::Sql, &instance);
    session.SetCurrent(SectionType::Queue, &document.AddQueue("Q1"));
    session.SetCurrent(SectionType::Mail, &document.Add("MAIL:one", SectionType::Mail));
    document.Save();
  }
  void TearDown() override {
    SqlServerTest::TearDown();
    messages.ExpectNoMore();
  }

  TemporaryFolder folder;
  RecordingMessages messages;
  ConfigurationSession session;
  std::string asked;
  TestServices services{session,
                        messages,
                        *this,
                        [this] {
                          return std::make_unique<RedirectedConnection>(
                              asked, SqlLoginConnectionString(server, user, password));
                        },
                        [] { return std::make_unique<TestWork>(); },
                        [](const std::string& /*note*/) {}};

 private:
  std::string InstallFolder() override { return {}; }
  std::string Version() override { return "7.8.9"; }
  void SetWatch(Watch /*watch*/) override {}
  bool Send(const MailArguments& /*arguments*/) override { return false; }
  int LastErrorNumber() override { return 0; }
  std::string LastErrorSource() override { return {}; }
  std::string LastErrorDescription() override { return {}; }
};

TEST(SendOnLine, HasItsSecondsAtAFullMinuteToo) {
  EXPECT_EQ(SendOnLine({}, QDateTime(QDate(2026, 11, 22), QTime(8, 41))), "Send On: 11/22/2026 8:41:00 AM");
}

TEST_F(ServerTests, ATrustedConnectionIsAskedForAndMailArrivesAsItIsDescribed) {
  Do(Database(), ReadScriptFile(SystemFiles(), TEST_DATA "/../../install", kInstallScript));
  const ShownLogin trusted{true, "unused", ""};
  messages.WillAsk("Email Address", "Please enter an email address to send the test email to",
                   "a@example.com");
  messages.WillShow({.text = "Email Sent", .title = "Test Succeeded", .icon = MessageIcon::Information});
  pellorin::SqlServerTest(services, trusted).Run();
  EXPECT_EQ(std::exchange(asked, {}), TrustedConnectionString(server));
  messages.WillAsk("Email Address", "Please enter the email address for an email to be queued.", "b");
  messages.WillShowSome();
  QueueTest(services, trusted).Run();
  EXPECT_EQ(messages.Last().title, "Test Succeeded");
  EXPECT_EQ(asked, TrustedConnectionString(server));

  const auto column = [this](const std::string& name) {
    return Ask("select " + name + " from PellorinStandInMail order by id");
  };
  EXPECT_EQ(column("recipients"), (Names{"a@example.com", "b"}));
  EXPECT_EQ(column("subject"),
            (Names{"Pellorin: Test Email from SQL Server", "Pellorin: Queued Email Test"}));
  EXPECT_EQ(column("queue"), (Names{"", "Q1"}));
  EXPECT_EQ(column("query"), (Names{"", ""}));
  for (const std::string& body : column("message"))
    EXPECT_NE(body.find("\r\nDefault Database: " + Database() +
                        "\r\nPellorin Version: 7.8.9\r\nSQL Connection: Trusted\r\nMail Server: one\r\n"),
              std::string::npos)
        << body;
}

}  // namespace
}  // namespace pellorin::test
