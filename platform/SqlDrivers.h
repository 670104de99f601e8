// The ODBC drivers for SQL Server that the system has.
#pragma once

#include <string>

#include "platform/FileOperations.h"

namespace pellorin {

// The driver's name in ODBC's settings, or the path of its library: the environment variable
// PELLORIN_ODBC_DRIVER, else the driver that is usual on this system.
std::string DefaultSqlDriver();

// A sentence that says how to get a driver that is missing.
std::string MissingSqlDriverAdvice();

// Why the driver cannot log in the user who runs the program: "no Kerberos ticket (kinit)". Empty when it
// can, or when this program cannot tell.
std::string TrustedLoginProblem(FileOperations& files);

}  // namespace pellorin
