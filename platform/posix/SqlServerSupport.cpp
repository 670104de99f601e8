#include "platform/SqlServerSupport.h"

#include "platform/Environment.h"
#include "platform/posix/KerberosTicket.h"

namespace pellorin {

const char* const kMissingDriverCure =
    "The driver is in the package tdsodbc; PELLORIN_ODBC_DRIVER names another one.";

std::string UsualOdbcDriver() {
  return EnvironmentOr("PELLORIN_ODBC_DRIVER", "FreeTDS");
}

std::string TrustedLoginProblem(FileOperations& files) {
  return MayHaveKerberosTicket(files) ? "" : "no Kerberos ticket (kinit)";
}

bool HasLocalSqlServer(FileOperations& files) {
  try {
    return files.Status("/opt/mssql/bin/sqlservr").kind == FileKind::File;
  } catch (const FileError&) {
    return false;
  }
}

}  // namespace pellorin
