// ODBC's handles as objects, and the reports of their failures. For OdbcConnection only.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <string_view>
#include <vector>

#include "sql/SqlConnection.h"

namespace pellorin {

// One report of a failure.
struct OdbcRecord {
  std::string state;  // five characters, as ODBC defines them
  int number = 0;     // of the server or the driver
  std::string text;   // without the names of driver and server
};

// One handle. The kind is SQL_HANDLE_ENV, SQL_HANDLE_DBC or SQL_HANDLE_STMT.
class OdbcHandle {
 public:
  OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent);
  ~OdbcHandle();
  OdbcHandle(const OdbcHandle&) = delete;
  OdbcHandle& operator=(const OdbcHandle&) = delete;

  SQLHANDLE Get() const { return handle_; }
  std::vector<OdbcRecord> Records() const;  // of the last call
  // SqlError with all records that say something, unless the result is a success or SQL_NO_DATA.
  void Check(SQLRETURN result, const char* operation) const;

 private:
  SQLSMALLINT kind_;
  SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

// Whether the text only says that something failed, and not why.
bool IsGeneric(std::string_view text);

// A record's text without the names of driver and server that it begins with: "[FreeTDS][SQL Server]".
std::string WithoutOrigin(std::string_view text);

// Between UTF-8 and ODBC's wide text, which is UTF-16 under another name.
std::basic_string<SQLWCHAR> Wide(std::string_view utf8);
std::string Narrow(const SQLWCHAR* units, std::size_t count);

}  // namespace pellorin
