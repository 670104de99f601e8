// The name of the computer that runs this program.
#pragma once

#include <string>

namespace pellorin {

std::string GetHostName();     // whole
std::string GetMachineName();  // the host name up to its first dot
// How this computer introduces itself to a mail server: its host name when that is a full one, else one of
// its addresses in brackets. Asks no name server.
std::string GetMailHelloName();

}  // namespace pellorin
