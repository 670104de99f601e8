// Base64 as mail and its logins use it (RFC 4648): with padding, without line breaks.
#pragma once

#include <string>
#include <string_view>

namespace pellorin {

inline constexpr std::string_view kBase64Characters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string Base64(std::string_view bytes);
// Decodes up to the first character that does not belong to Base64.
std::string FromBase64(std::string_view text);

}  // namespace pellorin
