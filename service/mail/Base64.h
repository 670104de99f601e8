// Base64 as mail and its logins use it (RFC 4648): with padding, without line breaks.
#pragma once

#include <string>
#include <string_view>

namespace pellorin {

std::string Base64(std::string_view bytes);
// What stands before the first character that is none of Base64's.
std::string FromBase64(std::string_view text);

}  // namespace pellorin
