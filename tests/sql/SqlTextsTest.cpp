// The texts of the connections: connection strings, server names, install script, commands, instance lists.
#include <gtest/gtest.h>

#include <regex>
#include <tuple>

#include "base/Utf16.h"
#include "platform/SqlServers.h"
#include "platform/posix/FolderRegistry.h"
#include "sql/ConnectionString.h"
#include "sql/InstallScript.h"
#include "sql/ServerAddress.h"
#include "sql/SqlInstances.h"
#include "tests/support/TemporaryFolder.h"

namespace pellorin::test {
namespace {

using Names = std::vector<std::string>;

TEST(ConnectionString, IsBuiltAsItIsAndReadBack) {
  EXPECT_EQ(SqlLoginConnectionString("HOST\\SALES", "sa", "p w"),
            "Provider=SQLOLEDB.1;Password=p w;Persist Security Info=True;User ID=sa;Data Source=HOST\\SALES");
  EXPECT_EQ(TrustedConnectionString("."),
            "Provider=SQLOLEDB.1;Integrated Security=SSPI;Persist Security Info=False;Initial Catalog=master;"
            "Data Source=.");
  for (const char* password : {"", " p ", "a=b=", "{x}}", "'q' \"r\"", "\u00E4\u20AC\u4E2D"}) {
    const auto login = ReadConnectionString(SqlLoginConnectionString("H,1", "u s", password));
    EXPECT_EQ(login.server + "|" + login.user + "|" + login.database, "H,1|u s|");
    EXPECT_EQ(login.password, password);
    EXPECT_FALSE(login.isTrusted);
  }
  const auto trusted = ReadConnectionString(TrustedConnectionString("H"));
  EXPECT_EQ(trusted.server + "|" + trusted.user + "|" + trusted.database, "H||master");
  EXPECT_TRUE(trusted.isTrusted);
  const auto foreign = ReadConnectionString(SqlLoginConnectionString("H", "u", "p;Data Source=elsewhere"));
  EXPECT_EQ(foreign.server + "|" + foreign.password, "H|p");
  EXPECT_THROW(ReadConnectionString(SqlLoginConnectionString("H", "u", "secret;part")), SqlError);
}

TEST(ServerAddress, IsReadInAllItsForms) {
  struct Row {
    const char *server, *host;
    int port;
    const char* instance;
  };
  for (const Row& row : {Row{"db1", "db1", 1433, ""}, Row{" db1.example , 5000 ", "db1.example", 5000, ""},
                         Row{"tcp:db1,5000", "db1", 5000, ""}, Row{"TCP: db1", "db1", 1433, ""},
                         Row{".", "localhost", 1433, ""}, Row{"(LOCAL)", "localhost", 1433, ""},
                         Row{"", "localhost", 1433, ""}, Row{".\\SALES", "localhost", 0, "SALES"},
                         Row{"db1\\SALES,5000", "db1", 5000, "SALES"}, Row{"db1 \\ SALES", "db1", 0, "SALES"},
                         Row{"10.0.0.1", "10.0.0.1", 1433, ""}, Row{"db1\\mssqlserver", "db1", 1433, ""}}) {
    const ServerAddress address = ParseServerAddress(row.server);
    EXPECT_EQ(std::tuple(address.host, int{address.port}, address.instance),
              std::tuple(row.host, row.port, row.instance))
        << row.server;
  }
  for (const char* server :
       {"db1,", "db1,x", "db1,0", "db1,65536", "db1,1,2", "db1,-1", "np:db1", "lpc:.", "{x", "a}b", "a\nb"})
    EXPECT_THROW(ParseServerAddress(server), SqlError) << server;
}

TEST(SqlInstances, AreThoseOfTheRegistryUnderTheMachinesName) {
  const TemporaryFolder folder;
  const std::string file = "reg/software/Microsoft/Microsoft SQL Server/installedinstances";
  const FolderRegistry registry(SystemFiles(), folder / "reg");
  const auto read = [&](bool isDefaultAssumed = false) -> Names {
    Names names;
    return GetInstalledSqlInstances(registry, isDefaultAssumed, "HOST1", names) ? names : Names{"none"};
  };
  EXPECT_EQ(read(), Names{"none"});
  EXPECT_EQ(read(true), (Names{"HOST1", ""}));
  const std::pair<std::string, Names> rows[] = {
      {std::string("MSSQLSERVER\0SALES\0\0", 19), {"HOST1", "HOST1\\SALES", ""}},
      {std::string("mssqlserver\0\0", 13), {"HOST1\\mssqlserver", ""}},
      {std::string("\xC4RZTE\0", 6), {"HOST1\\\u00C4RZTE"}},  // closed by a single NUL
      {std::string("\0", 1), {}},
      {"", {"none"}}};
  for (const auto& [bytes, names] : rows) {
    folder.Write(file, bytes);
    EXPECT_EQ(read(), names);
    EXPECT_EQ(read(true), names) << "the list that is there counts";
  }
}

TEST(SqlInstances, AreNotAssumedWhereARegistryIsNamed) {
  ::setenv("PELLORIN_REGISTRY", "/no/such/folder", 1);
  EXPECT_FALSE(HasUnlistedSqlServer(SystemFiles()));
  ::unsetenv("PELLORIN_REGISTRY");
}

TEST(InstallScript, IsChangedOnlyWhereItMustBe) {
  const std::string script =
      "-- \xE4 CREATE nothing\r\ncreate Procedure x AS\r\n--SQLstart\r\na\r\n--sqlEND\r\n"
      "-- CREATE PROCEDURE\r\n--sqlstart b --sqlend";
  const TemporaryFolder folder;
  folder.Write(kInstallScript, script);
  const std::string read = ReadScriptFile(SystemFiles(), folder.Path(), kInstallScript);
  EXPECT_EQ(read.substr(0, 6), "-- \u00E4 ");
  folder.Write("other.sql", "\xEF\xBB\xBF" + script);
  EXPECT_THROW(ReadScriptFile(SystemFiles(), folder.Path(), "other.sql"), NumberedError);
  EXPECT_EQ(ReadScriptFile(SystemFiles(), folder.Path(), "SP_sendPLN_create.SQL"), read);
  const std::size_t first = read.find("create Procedure");
  EXPECT_EQ(AlteringScript(read), read.substr(0, first) + "ALTER PROCEDURE" + read.substr(first + 16));
  EXPECT_EQ(AlteringScript("no such words"), "no such words");
  EXPECT_EQ(ScriptWithoutBlock("1 --SQLstart\r\na\r\n--sqlEND\r\n--sqlstart b --sqlend"),
            "1 /* --sqlstart\r\na\r\n--sqlend */\r\n/* --sqlstart b --sqlend */");
  EXPECT_EQ(ScriptWithoutBlock("nothing"), "nothing");
}

TEST(InstallScript, TheOneThatShipsCanBeInstalled) {
  const std::string script = ReadScriptFile(SystemFiles(), PROJECT_FOLDER "/install", kInstallScript);
  const std::size_t create = script.find("CREATE PROCEDURE sp_sendPLN");
  const std::size_t start = script.find("\n--sqlstart\n");
  const std::size_t end = script.find("\n--sqlend\n");
  ASSERT_NE(end, std::string::npos);
  EXPECT_EQ(script.rfind("CREATE PROCEDURE"), create);
  EXPECT_TRUE(create < start && start < end);
  EXPECT_EQ(script.find("--sql"), start + 1);
  EXPECT_EQ(script.find("*/"), std::string::npos);
  // A line "GO" is a command of query tools and no Transact-SQL.
  EXPECT_FALSE(std::regex_search(script, std::regex("\n[ \t]*GO[ \t]*\r?(\n|$)", std::regex::icase)));
}

TEST(Utf16, IsReadAndWritten) {
  const std::string text = "a\u00E4\u20AC\U0001F600";
  EXPECT_EQ(ToUtf16(text), u"a\u00E4\u20AC\U0001F600");
  EXPECT_EQ(ToUtf8(ToUtf16(text)), text);
  EXPECT_EQ(ToUtf16("\xFFx"), u"\uFFFDx");
  EXPECT_EQ(ToUtf8(std::u16string{0xD83D, u'x', 0xDE00}), "\uFFFDx\uFFFD");
}

}  // namespace
}  // namespace pellorin::test
