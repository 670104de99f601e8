// UTF-16 texts, for interfaces that take wide characters. Invalid UTF-8 and UTF-16 becomes U+FFFD.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pellorin {

std::u16string ToUtf16(std::string_view utf8);
std::string ToUtf8(std::u16string_view utf16);

// The first `most` UTF-16 units of a UTF-8 text, with "..." after them if the text is longer.
std::string Shortened(std::string_view utf8, std::size_t most);

}  // namespace pellorin
