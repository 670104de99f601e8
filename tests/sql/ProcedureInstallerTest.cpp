// Installing sp_sendPLN over the real driver: what is in the database afterwards, and the boxes on the way.
#include "sql/ProcedureInstaller.h"

#include <filesystem>

#include "sql/InstallScript.h"
#include "tests/sql/SqlServerFixture.h"
#include "tests/support/RecordingMessages.h"
#include "tests/support/TemporaryFolder.h"

namespace pellorin::test {
namespace {

const std::string kCreation =
    "\r\nCREATE PROCEDURE sp_sendPLN AS\r\n-- CREATE PROCEDURE here too\r\n"
    "--sqlstart\r\nSELECT 1\r\n--sqlend\r\nSELECT 2";
const std::string kScript = "-- \xE4" + kCreation;
const std::string kScriptText = "-- \u00E4" + kCreation;
const std::string kCreate = "Could not create sp_sendPLN procedure.";
const std::string kPermissions =
    " The account you use to connect to the database may have insufficient permissions.\r\n";

class ProcedureInstallerTest : public SqlServerTest {
 protected:
  ProcedureInstallerTest() { folder.Write(kInstallScript, kScript); }
  void TearDown() override {
    SqlServerTest::TearDown();
    messages.ExpectNoMore();
  }
  bool Install(bool grantsToAll = false, bool allowsTempTables = false) {
    return installer.Install(login, {Database(), grantsToAll, allowsTempTables});
  }
  void ExpectRefusal(const std::string& intoDatabase, const std::string& start, const std::string& part) {
    messages.WillShowSome();
    EXPECT_FALSE(installer.Install(login, {intoDatabase, false, false}));
    const std::string text = messages.Last().text;
    EXPECT_TRUE(text.starts_with(start + kPermissions) && text.find(part) != std::string::npos) << text;
  }
  static Message SqlErrorBox(const std::string& text) { return Warning("SQL Error", text); }

  TemporaryFolder folder;
  RecordingMessages messages;
  ProcedureInstaller installer{[] {
                                 auto connection = std::make_unique<OdbcConnection>(SystemFiles());
                                 connection->CommandTimeout = std::chrono::seconds(IsReal() ? 30 : 1);
                                 return connection;
                               },
                               SystemFiles(), folder.Path(), messages};
  SqlLogin login{server, false, user, password};
};

TEST_F(ProcedureInstallerTest, CreatesAndUpdates) {
  const std::string isSame = "\r\nThe installed sp_sendPLN is that of the script beside the program.";
  ASSERT_TRUE(Install());
  EXPECT_TRUE(installer.SecurityNote().ends_with(isSame)) << installer.SecurityNote();
  EXPECT_EQ(Procedure(), kScriptText);
  EXPECT_FALSE(IsGranted());
  folder.Write(kInstallScript, kScript + "\r\n-- newer");
  ASSERT_TRUE(Install(true, true));
  EXPECT_TRUE(installer.SecurityNote().ends_with(isSame)) << "after an update that allows temporary tables";
  EXPECT_TRUE(IsGranted());
  // A server keeps the definition as a creation; the first words alone tell an update.
  const std::string updated = Procedure();
  EXPECT_NE(updated.find("\r\n-- CREATE PROCEDURE here too\r\n/* --sqlstart\r\nSELECT 1\r\n--sqlend */\r\n"
                         "SELECT 2\r\n-- newer"),
            std::string::npos)
      << updated;
  ASSERT_TRUE(Install());
  EXPECT_TRUE(IsGranted());  // never taken back
  if (!tds) return;
  const auto sent = tds->Batches();
  const std::string altering = "-- \u00E4\r\nALTER" + kCreation.substr(8) + "\r\n-- newer";
  EXPECT_EQ(std::count(sent.begin(), sent.end(), altering), 1);
}

TEST_F(ProcedureInstallerTest, SaysWhatFailedAndChangesNothing) {
  const auto refused = Closed();
  refused->ConnectionString = SqlLoginConnectionString(server, user, "wrong");
  const std::string refusal = SqlFailure([&] { refused->Open(); });
  login.password = "wrong";
  messages.WillShow(
      Warning("Connection Error",
              "Could not open connection. Please make sure that the SQL server name is spelled "
              "correctly and that the account you use to connect has sufficient permissions.\r\n" +
                  refusal));
  EXPECT_FALSE(Install());
  EXPECT_NE(installer.SecurityNote(), "") << "the password was sent";
  login.password = password;
  ExpectRefusal("no_such_db", "Could not switch the database context to no_such_db.", "");
  folder.Write(kInstallScript, "CREATE PROCEDURE sp_sendPLN AS SELECT 'x");
  ExpectRefusal(Database(), kCreate, "");
  std::filesystem::remove(folder / kInstallScript);
  ExpectRefusal(Database(), kCreate, folder / kInstallScript);
  EXPECT_EQ(Procedure(), "");
}

TEST_F(ProcedureInstallerTest, SaysWhyItCannotListTheDatabases) {
  if (IsReal()) GTEST_SKIP() << "needs a server that fails on demand";
  tds->AtStep(tds->Steps() + kOpening + 1, Hook::Error(229, "The SELECT permission was denied."));
  messages.WillShow(
      SqlErrorBox("Could not retrieve the list of databases. Please make sure that the account you "
                  "use to connect has sufficient permissions.\r\nThe SELECT permission was denied."));
  EXPECT_FALSE(installer.ListDatabases(login));
}

TEST_F(ProcedureInstallerTest, LeavesTheDatabaseAsItWasWhateverStepFails) {
  if (IsReal()) GTEST_SKIP() << "needs a server that fails on demand";
  const std::string earlier = "CREATE PROCEDURE sp_sendPLN AS SELECT 0";
  Do(Database(), earlier);
  const std::string denied = "Permission was denied.";
  const std::string sentences[] = {
      kCreate,  // beginning
      "Could not switch the database context to " + Database() + ".",
      "Could not determine if the stored procedure already exists in the database.",
      kCreate,
      "Could not grant access to this procedure to role PUBLIC.",
      kCreate};  // committing
  const int last = static_cast<int>(std::size(sentences));
  bool isLocked = false;  // while the last box was open
  messages.onShow = [&] { isLocked = tds->HasOpenTransaction(); };
  for (int index = 0; index < last; ++index) {
    for (const Hook& hook :
         {Hook::Error(229, denied), Hook::ErrorAndRollBack(229, denied), Hook::Drop(), Hook::Silent()}) {
      tds->AtStep(tds->Steps() + kOpening + index + 1, hook);
      const bool isAnswered = hook.kind.starts_with("error");
      const std::string text =
          index + 1 < last || isAnswered
              ? sentences[index] + kPermissions
              : "The server did not answer the commit: sp_sendPLN may have been updated. Please check the "
                "database, or run the setup again.\r\n";
      if (isAnswered)
        messages.WillShow(SqlErrorBox(text + denied));
      else
        messages.WillShowSome();
      EXPECT_FALSE(Install(true));
      EXPECT_TRUE(messages.Last().text.starts_with(text)) << messages.Last().text;
      if (isAnswered) {
        EXPECT_FALSE(isLocked) << "rolled back only after the box: " << text;
      }
      EXPECT_GT(messages.Last().text.size(), text.size());
      EXPECT_EQ(Procedure(), earlier) << text;
      EXPECT_FALSE(IsGranted());
    }
  }
  // What follows the commit cannot undo it.
  for (const Hook& hook : {Hook::Error(229, denied), Hook::Drop()}) {
    tds->AtStep(tds->Steps() + kOpening + last + 1, hook);
    EXPECT_TRUE(Install(true));
    EXPECT_TRUE(IsGranted());
  }
}

}  // namespace
}  // namespace pellorin::test
