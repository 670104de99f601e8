// One connection to a SQL Server: opened, used and closed by one operation, never pooled. Failures are
// SqlErrors whose description is the server's own sentence, or the driver's where no server answered. No
// message, log or argument list ever holds a password.
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

// A commit that got no answer: the server may have done it or not.
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

  // To be set before Open; as ConnectionString.h builds it.
  std::string ConnectionString;
  std::chrono::seconds ConnectionTimeout{15};  // until the driver connects, and then for each answer
  std::chrono::seconds CommandTimeout{30};     // for each operation; a silent server may take twice that

  virtual void Open() = 0;
  // A sentence on what protected the last attempt to open; empty when nothing that matters was sent.
  virtual std::string SecurityNote() const = 0;
  virtual void Close() = 0;  // without failure; a transaction that is open is rolled back by the server

  virtual void BeginTransaction() = 0;
  virtual void CommitTransaction() = 0;  // CommitInDoubt when the server does not answer
  virtual void RollBackTransaction() = 0;

  virtual void SetDefaultDatabase(const std::string& name) = 0;
  virtual std::string DefaultDatabase() = 0;  // as the server says it

  // The first column of the first result as texts; NULL is the empty text.
  virtual std::vector<std::string> QueryColumn(const std::string& statement) = 0;
  virtual void Execute(const std::string& statement) = 0;
  // Calls a stored procedure with parameters by name, each a variable-length text of kLongestParameter. A
  // value that is longer is an error, never cut.
  virtual void CallProcedure(const std::string& name, const std::vector<NamedText>& parameters) = 0;
};

using SqlConnectionFactory = std::function<std::unique_ptr<SqlConnection>()>;

}  // namespace pellorin
