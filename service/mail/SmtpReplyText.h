// A mail server's reply for its reader's eyes. Some servers repeat what they were told: passwords and the
// lines of a login dialogue are shown as "***", a password of less than four characters where it stands
// alone.
#pragma once

#include <string>
#include <vector>

namespace pellorin {

// Each line behind a CR LF. Text that is no UTF-8 is read in the code page of Pellorin.ini.
std::string ShownReply(const std::vector<std::string>& lines, const std::string& user,
                       const std::string& password);

}  // namespace pellorin
