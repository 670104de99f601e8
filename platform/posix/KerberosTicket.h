// Whether the user has logged in to a Kerberos realm, as trusted connections require.
#pragma once

#include "platform/FileOperations.h"

namespace pellorin {

// False when the tickets are kept in a file, as by default, and that file holds no valid ticket. True when
// this program cannot tell.
bool MayHaveKerberosTicket(FileOperations& files);

}  // namespace pellorin
