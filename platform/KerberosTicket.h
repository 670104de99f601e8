// Whether the user has logged in to a Kerberos realm, as trusted connections need it.
#pragma once

namespace pellorin {

// False only when it is certain: the tickets are kept in a file, as they usually are, and there is none.
bool MayHaveKerberosTicket();

}  // namespace pellorin
