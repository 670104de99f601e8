#include "platform/SqlDrivers.h"

#include "platform/Environment.h"
#include "platform/posix/KerberosTicket.h"

namespace pellorin {

std::string DefaultSqlDriver() {
  return EnvironmentOr("PELLORIN_ODBC_DRIVER", "FreeTDS");
}

std::string MissingSqlDriverAdvice() {
  return "The driver is in the package tdsodbc; PELLORIN_ODBC_DRIVER names another one.";
}

std::string TrustedLoginProblem(FileOperations& files) {
  return MayHaveKerberosTicket(files) ? "" : "no Kerberos ticket (kinit)";
}

}  // namespace pellorin
