// Tests of the connections against a SQL Server: the one in this process, or the real one that
// PELLORIN_TEST_SQL_SERVER, PELLORIN_TEST_SQL_USER and PELLORIN_TEST_SQL_PASSWORD name. Each test that asks
// for a database gets one of its own.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "base/TextCase.h"
#include "platform/Guid.h"
#include "sql/ConnectionString.h"
#include "sql/OdbcConnection.h"
#include "tests/sql/TdsServer.h"

namespace pellorin::test {

// The description that an operation fails with; "no failure" when it does not.
template <typename Operation>
std::string SqlFailure(Operation&& operation) {
  try {
    operation();
    return "no failure";
  } catch (const SqlError& error) {
    return error.Description();
  }
}

class SqlServerTest : public ::testing::Test {
 protected:
  SqlServerTest() {
    if (IsReal()) return;
    tds = std::make_unique<TdsServer>();
    tds->AddLogin(user, password);
    server = "127.0.0.1," + std::to_string(tds->Port());
  }
  void TearDown() override {  // servers end the sessions of the test some time after their clients
    std::string failure = hasDatabase_ ? "" : "no failure";
    for (int attempt = 0; attempt < 50 && failure != "no failure"; ++attempt) {
      if (attempt > 0) std::this_thread::sleep_for(std::chrono::milliseconds(100));
      failure = SqlFailure([&] { Do("master", "drop database " + Quoted(databaseName)); });
    }
    EXPECT_EQ(failure, "no failure") << "the database " << databaseName << " is left behind";
    hasDatabase_ = false;
  }

  const std::string& Database() {
    if (!hasDatabase_) Do("master", "create database " + Quoted(databaseName));
    hasDatabase_ = true;
    return databaseName;
  }

  static bool IsReal() { return std::getenv("PELLORIN_TEST_SQL_SERVER") != nullptr; }

  std::unique_ptr<SqlConnection> Closed() const {
    auto connection = std::make_unique<OdbcConnection>(SystemFiles());
    connection->ConnectionString = SqlLoginConnectionString(server, user, password);
    return connection;
  }
  std::unique_ptr<SqlConnection> Open(const std::string& inDatabase) const {
    auto connection = Closed();
    connection->Open();
    connection->SetDefaultDatabase(inDatabase);
    return connection;
  }
  void Do(const std::string& inDatabase, const std::string& statement) const {
    Open(inDatabase)->Execute(statement);
  }
  std::vector<std::string> Ask(const std::string& statement) {
    return Open(Database())->QueryColumn(statement);
  }
  // The text of the procedure; empty when there is none.
  std::string Procedure() {
    const auto found =
        Ask("select definition from sys.sql_modules where object_id = object_id('sp_sendPLN')");
    return found.empty() ? std::string() : found.front();
  }
  bool IsGranted() {
    return Ask("select count(*) from sys.database_permissions where major_id = object_id('sp_sendPLN') and "
               "grantee_principal_id = 0")
               .front() == "1";
  }
  static std::string Quoted(const std::string& name) {
    std::string quoted = "[";
    for (const char letter : name) quoted += letter == ']' ? "]]" : std::string(1, letter);
    return quoted + "]";
  }

  std::unique_ptr<TdsServer> tds;  // null when the server is a real one
  std::string server = Variable("SERVER", "");
  std::string user = Variable("USER", "sales");
  std::string password = Variable("PASSWORD", "p} {w='\"\u00E4\u20AC");
  std::string databaseName = "pellorin_test_" + FoldCase(GenerateGUID().substr(1, 8));

 private:
  bool hasDatabase_ = false;

  static std::string Variable(const std::string& name, const std::string& otherwise) {  // of a real server
    const char* value = std::getenv(("PELLORIN_TEST_SQL_" + name).c_str());
    return IsReal() && value != nullptr ? value : otherwise;
  }
};

}  // namespace pellorin::test
