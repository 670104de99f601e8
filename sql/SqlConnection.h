// One connection to a SQL Server, opened, used and closed by one operation, never pooled. Failures are
// SqlErrors: the description is the server's own sentence, or the driver's if no server answered. No message,
// log or argument list ever holds a password.
//
//   connection->ConnectionString = TrustedConnectionString("db1");
//   connection->Open();
//   connection->QueryColumn("select name from sysdatabases");  // {"master", "sales"}
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/NumberedError.h"

namespace pellorin {

class SqlError : public NumberedError {
 public:
  using NumberedError::NumberedError;
};

// A commit without an answer: the server may or may not have done it.
class CommitInDoubt : public SqlError {
 public:
  using SqlError::SqlError;
};

struct NamedText {
  std::string name;  // with its "@"
  std::string value;
};

inline constexpr std::size_t kLongestParameter = 4000;  // UTF-16 code units, as the procedure declares them

class SqlConnection {
 public:
  virtual ~SqlConnection() = default;

  // Set before Open, to one of the strings of ConnectionString.h.
  std::string ConnectionString;
  std::chrono::seconds ConnectionTimeout{15};  // to connect, and then for each answer until it is open
  std::chrono::seconds CommandTimeout{30};     // for each operation; a silent server may take twice that

  virtual void Open() = 0;
  // A sentence that says which server was reached at the last opening, by which driver, and whether
  // encrypted. Empty when nothing confidential was sent.
  virtual std::string SecurityNote() const = 0;
  virtual void Close() = 0;  // never fails; the server rolls back an open transaction

  virtual void BeginTransaction() = 0;
  virtual void CommitTransaction() = 0;  // CommitInDoubt when the server does not answer
  virtual void RollBackTransaction() = 0;

  virtual void SetDefaultDatabase(const std::string& name) = 0;
  virtual std::string DefaultDatabase() = 0;  // the server's answer

  // The first column of the first result, as texts. NULL is the empty text.
  virtual std::vector<std::string> QueryColumn(const std::string& statement) = 0;
  virtual void Execute(const std::string& statement) = 0;
  // Calls a stored procedure with named parameters, each a text of at most kLongestParameter. A longer value
  // is an error; it is never cut.
  virtual void CallProcedure(const std::string& name, const std::vector<NamedText>& parameters) = 0;
};

using SqlConnectionFactory = std::function<std::unique_ptr<SqlConnection>()>;

}  // namespace pellorin
