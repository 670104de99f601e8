// Code page 1252 on every system: the text of Pellorin.ini. The five codes without a character (81 8D 8F 90
// 9D) stand for U+0081 ... U+009D, as the system that the file comes from converts them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pellorin {

std::string AnsiToUtf8(std::string_view ansi);

// Nothing when a character has no code in the code page, or when the text is not valid UTF-8.
std::optional<std::string> Utf8ToAnsi(std::string_view utf8);

}  // namespace pellorin
