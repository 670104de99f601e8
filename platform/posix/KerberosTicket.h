// Whether the user has logged in to a Kerberos realm, as trusted connections need it.
#pragma once

namespace pellorin {

// False when the tickets are kept in a file, as they are unless the system is told otherwise, and that file
// holds no ticket that is still valid. True wherever this program cannot tell.
bool MayHaveKerberosTicket();

}  // namespace pellorin
