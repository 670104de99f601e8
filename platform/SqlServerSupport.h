// What connections to SQL Servers need to know of this system.
#pragma once

#include <string>

#include "platform/FileOperations.h"

namespace pellorin {

// The ODBC driver that the environment variable PELLORIN_ODBC_DRIVER names, by the name under which it is
// installed or by the path of its library; else the usual one of this system.
std::string UsualOdbcDriver();

// How to get the usual driver where it is missing: a sentence.
extern const char* const kMissingDriverCure;

// What keeps this user from trusted connections, with the cure: "no Kerberos ticket (kinit)". Empty when
// nothing does, or when this program cannot tell.
std::string TrustedLoginProblem(FileOperations& files);

// Whether a SQL Server is installed on this machine, as far as this user may look.
bool HasLocalSqlServer(FileOperations& files);

}  // namespace pellorin
