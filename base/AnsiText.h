// Code page 1252, in which Pellorin.ini is written on every system. The five codes without a character (81,
// 8D, 8F, 90, 9D) become the characters of the same numbers, U+0081 to U+009D.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pellorin {

std::string AnsiToUtf8(std::string_view ansi);

// Nothing when a character is not in the code page, or the text is not valid UTF-8.
std::optional<std::string> Utf8ToAnsi(std::string_view utf8);

}  // namespace pellorin
