// The handles of ODBC, freed in time, and what went wrong with them. For OdbcConnection alone.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <string_view>
#include <vector>

#include "sql/SqlConnection.h"

namespace pellorin {

// One record of what went wrong.
struct OdbcRecord {
  std::string state;  // five characters, as ODBC defines them
  int number = 0;     // of the server or the driver
  std::string text;   // without the names of driver and server
};

// One handle; its kind is one of SQL_HANDLE_ENV, SQL_HANDLE_DBC, SQL_HANDLE_STMT.
class OdbcHandle {
 public:
  OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent);
  ~OdbcHandle();
  OdbcHandle(const OdbcHandle&) = delete;
  OdbcHandle& operator=(const OdbcHandle&) = delete;

  SQLHANDLE Get() const { return handle_; }
  std::vector<OdbcRecord> Records() const;  // of the last call
  // SqlError with all records that tell something, unless the result is a success. Having no data is one.
  void Check(SQLRETURN result, const char* operation) const;

 private:
  SQLSMALLINT kind_;
  SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

// Whether the driver only says that something failed, and nothing of the reason.
bool IsGeneric(std::string_view text);

// A record's text without the names of driver and server in brackets that it begins with.
std::string WithoutOrigin(std::string_view text);

// ODBC's wide text: the same units under another name.
std::basic_string<SQLWCHAR> Wide(std::string_view utf8);
std::string Narrow(const SQLWCHAR* units, std::size_t count);

}  // namespace pellorin
