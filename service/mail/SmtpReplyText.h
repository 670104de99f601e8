// A mail server's reply as it is shown. Some servers repeat what a client said, so passwords and the lines of
// a login are shown as "***". A password of fewer than four characters is masked only where it stands alone.
#pragma once

#include <string>
#include <vector>

namespace pellorin {

// Each line follows a CR LF. Text that is not UTF-8 is read in the code page of Pellorin.ini.
std::string ShownReply(const std::vector<std::string>& lines, const std::string& user,
                       const std::string& password);

}  // namespace pellorin
