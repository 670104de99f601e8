// The name of the computer that runs this program.
#pragma once

#include <string>

namespace pellorin {

std::string GetHostName();     // the whole name
std::string GetMachineName();  // the host name up to its first dot
// The name by which this computer introduces itself to a mail server: its host name if that has a domain,
// else one of its addresses in brackets. Asks no name server.
std::string GetMailHelloName();

}  // namespace pellorin
