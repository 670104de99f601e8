#include "sql/OdbcConnection.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Deadline.h"
#include "sql/OdbcDriver.h"
#include "sql/OdbcHandles.h"
#include "sql/ReachedServer.h"

namespace pellorin {
namespace {

constexpr const char* kSource = "OdbcConnection";

SQLPOINTER Number(std::chrono::seconds value) {
  return reinterpret_cast<SQLPOINTER>(static_cast<SQLULEN>(value.count()));  // as ODBC passes numbers
}

SQLINTEGER Units(const std::basic_string<SQLWCHAR>& text) {
  return static_cast<SQLINTEGER>(text.size());
}

// Whether the server itself refused the login: then the login had been sent.
bool IsLoginAnswered(const std::vector<OdbcRecord>& records) {
  return std::ranges::any_of(records, [](const OdbcRecord& record) {
    return record.state.starts_with("28") || record.state.starts_with("42");
  });
}

}  // namespace

struct OdbcConnection::Session {
  OdbcHandle environment{SQL_HANDLE_ENV, SQL_NULL_HANDLE};
  std::unique_ptr<OdbcHandle> connection;
  bool isConnected = false;
  bool isInTransaction = false;

  Session() {
    SQLSetEnvAttr(environment.Get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    connection = std::make_unique<OdbcHandle>(SQL_HANDLE_DBC, environment.Get());
  }
  ~Session() {
    if (isConnected && isInTransaction) Leave(SQL_ROLLBACK);  // or some drivers do not disconnect
    if (isConnected) SQLDisconnect(connection->Get());
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Ends the transaction. The driver then begins an empty one at once, which autocommit ends; a failure of
  // that does not matter.
  SQLRETURN Leave(SQLSMALLINT how) {
    isInTransaction = false;
    const SQLRETURN result = SQLEndTran(SQL_HANDLE_DBC, connection->Get(), how);
    if (!SQL_SUCCEEDED(result)) return result;  // its reason must stay the last one
    SQLSetConnectAttr(connection->Get(), SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_ON),
                      0);
    return result;
  }

  // Whether the server itself reported the last failure: the connection neither timed out nor broke.
  bool HasAnswered() const {
    SQLUINTEGER isDead = SQL_CD_FALSE;
    SQLGetConnectAttr(connection->Get(), SQL_ATTR_CONNECTION_DEAD, &isDead, sizeof isDead, nullptr);
    const auto records = connection->Records();
    return isDead == SQL_CD_FALSE && std::ranges::none_of(records, [](const OdbcRecord& record) {
             return record.state.starts_with("08") || record.state.starts_with("HYT");
           });
  }
};

OdbcConnection::OdbcConnection(FileOperations& files, std::string driver, std::uint16_t browserPort)
    : files_(files), driver_(std::move(driver)), browserPort_(browserPort) {}

OdbcConnection::~OdbcConnection() = default;

void OdbcConnection::Open() {
  const Deadline end(ConnectionTimeout);
  securityNote_.clear();
  const ConnectionSettings settings = ReadConnectionString(ConnectionString);
  if (!settings.isTrusted && settings.user.empty())
    throw SqlError(0, ErrorSource(kSource), "A SQL login needs a user name.");
  const ReachedServer server = ReachServer(settings, browserPort_, end);
  auto wide = Wide(DriverText(driver_, settings, server, CommandTimeout));
  const auto left = std::max(std::chrono::floor<std::chrono::seconds>(end.Left()), std::chrono::seconds(1));
  auto session = std::make_unique<Session>();
  const OdbcHandle& connection = *session->connection;
  SQLSetConnectAttr(connection.Get(), SQL_ATTR_LOGIN_TIMEOUT, Number(left), SQL_IS_UINTEGER);
  try {
    connection.Check(SQLDriverConnectW(connection.Get(), nullptr, wide.data(), SQL_NTS, nullptr, 0, nullptr,
                                       SQL_DRIVER_NOPROMPT),
                     "Open");
  } catch (const SqlError& error) {
    const std::string& text = error.Description();
    const bool mayHaveSentPassword =
        !settings.isTrusted && !server.offersEncryption && !IsDriverMissing(text);
    if (mayHaveSentPassword)
      securityNote_ = SecuritySentence(driver_, settings, server, IsLoginAnswered(connection.Records()));
    const std::string advice = FailureAdvice(files_, text, settings.isTrusted, server.offersEncryption);
    throw SqlError(error.Number(), error.Source(), advice.empty() ? text : text + "\r\n" + advice);
  }
  securityNote_ = SecuritySentence(driver_, settings, server);
  session->isConnected = true;
  session_ = std::move(session);
}

void OdbcConnection::Close() {
  session_.reset();
}

OdbcConnection::Session& OdbcConnection::Opened() const {
  if (session_ == nullptr) throw SqlError(0, ErrorSource(kSource), "The connection is not open.");
  return *session_;
}

std::unique_ptr<OdbcHandle> OdbcConnection::Statement() const {
  auto statement = std::make_unique<OdbcHandle>(SQL_HANDLE_STMT, Opened().connection->Get());
  SQLSetStmtAttr(statement->Get(), SQL_ATTR_QUERY_TIMEOUT, Number(CommandTimeout), SQL_IS_UINTEGER);
  // Texts are sent as they are. FreeTDS's driver still interprets what is outside comments and strings.
  SQLSetStmtAttr(statement->Get(), SQL_ATTR_NOSCAN, reinterpret_cast<SQLPOINTER>(SQL_NOSCAN_ON),
                 SQL_IS_UINTEGER);
  return statement;
}

// Later errors surface only after earlier results are consumed.
void OdbcConnection::FinishResults(const OdbcHandle& statement, const char* operation) const {
  SQLRETURN result = SQL_SUCCESS;
  while ((result = SQLMoreResults(statement.Get())) != SQL_NO_DATA) statement.Check(result, operation);
}

void OdbcConnection::Execute(const std::string& text) {
  const auto statement = Statement();
  auto wide = Wide(text);
  statement->Check(SQLExecDirectW(statement->Get(), wide.data(), Units(wide)), "Execute");
  FinishResults(*statement, "Execute");
}

void OdbcConnection::BeginTransaction() {
  Session& session = Opened();
  session.connection->Check(SQLSetConnectAttr(session.connection->Get(), SQL_ATTR_AUTOCOMMIT,
                                              reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_OFF), 0),
                            "BeginTransaction");
  session.isInTransaction = true;
}

void OdbcConnection::CommitTransaction() {
  Session& session = Opened();
  const SQLRETURN result = session.Leave(SQL_COMMIT);
  try {
    session.connection->Check(result, "CommitTransaction");
  } catch (const SqlError& error) {
    if (session.HasAnswered()) throw;
    throw CommitInDoubt(error.Number(), error.Source(), error.Description());
  }
}

void OdbcConnection::RollBackTransaction() {
  Session& session = Opened();
  session.connection->Check(session.Leave(SQL_ROLLBACK), "RollBackTransaction");
}

void OdbcConnection::SetDefaultDatabase(const std::string& name) {
  std::string quoted;
  for (const char letter : name) quoted += letter == ']' ? "]]" : std::string(1, letter);
  Execute("USE [" + quoted + "]");
}

std::string OdbcConnection::DefaultDatabase() {
  const std::vector<std::string> names = QueryColumn("select db_name()");
  return names.empty() ? std::string() : names.front();
}

namespace {

std::string ColumnText(const OdbcHandle& statement) {
  std::basic_string<SQLWCHAR> text;
  std::array<SQLWCHAR, 2048> piece{};
  for (;;) {
    SQLLEN length = 0;
    const SQLRETURN result = SQLGetData(statement.Get(), 1, SQL_C_WCHAR, piece.data(), sizeof piece, &length);
    statement.Check(result, "QueryColumn");
    if (result == SQL_NO_DATA || length == SQL_NULL_DATA) break;
    std::size_t units = 0;
    while (units < piece.size() && piece[units] != 0) ++units;
    text.append(piece.data(), units);
    if (result == SQL_SUCCESS) break;
  }
  return Narrow(text.data(), text.size());
}

}  // namespace

std::vector<std::string> OdbcConnection::QueryColumn(const std::string& text) {
  const auto statement = Statement();
  auto wide = Wide(text);
  statement->Check(SQLExecDirectW(statement->Get(), wide.data(), Units(wide)), "QueryColumn");
  std::vector<std::string> values;
  for (SQLRETURN row; (row = SQLFetch(statement->Get())) != SQL_NO_DATA;) {
    statement->Check(row, "QueryColumn");
    values.push_back(ColumnText(*statement));
  }
  FinishResults(*statement, "QueryColumn");
  return values;
}

void OdbcConnection::CallProcedure(const std::string& name, const std::vector<NamedText>& parameters) {
  const auto statement = Statement();
  std::string text = "exec " + name;
  std::vector<std::basic_string<SQLWCHAR>> values;
  std::vector<SQLLEN> sizes;
  for (const NamedText& parameter : parameters) {
    text += (values.empty() ? " " : ",") + parameter.name + "=?";
    values.push_back(Wide(parameter.value));
    sizes.push_back(static_cast<SQLLEN>(values.back().size() * sizeof(SQLWCHAR)));
    if (values.back().size() > kLongestParameter)
      throw SqlError(0, ErrorSource(kSource),
                     "The value of " + parameter.name + " is longer than 4000 characters.");
  }
  for (std::size_t i = 0; i < values.size(); ++i)
    statement->Check(
        SQLBindParameter(statement->Get(), static_cast<SQLUSMALLINT>(i + 1), SQL_PARAM_INPUT, SQL_C_WCHAR,
                         SQL_WVARCHAR, kLongestParameter, 0, values[i].data(), 0, &sizes[i]),
        "CallProcedure");
  auto wide = Wide(text);
  statement->Check(SQLExecDirectW(statement->Get(), wide.data(), Units(wide)), "CallProcedure");
  FinishResults(*statement, "CallProcedure");
}

}  // namespace pellorin
