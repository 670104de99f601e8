// UTF-16 texts, as wide interfaces take them. What is no UTF-8 or UTF-16 becomes U+FFFD.
#pragma once

#include <string>
#include <string_view>

namespace pellorin {

std::u16string ToUtf16(std::string_view utf8);
std::string ToUtf8(std::u16string_view utf16);

}  // namespace pellorin
