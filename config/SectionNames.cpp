#include "config/SectionNames.h"

#include <algorithm>

#include "platform/AnsiText.h"

namespace pellorin {

std::string NameProblem(std::string_view name) {
  constexpr std::size_t kLongestName = 200;  // bytes; the buffer for all names holds 10,000
  const auto isControl = [](char character) {
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F;
  };
  if (name.find_first_of(":]|") != std::string_view::npos || std::any_of(name.begin(), name.end(), isControl))
    return "A name cannot hold a colon, a closing bracket, a vertical bar or a control character.";
  if (name.starts_with(' ') || name.ends_with(' ')) return "A name cannot begin or end with a blank.";
  const auto ansiName = Utf8ToAnsi(name);
  if (!ansiName)
    return "The name holds a character that Pellorin.ini cannot hold (it is outside code page 1252).";
  if (ansiName->size() > kLongestName) return "A name cannot be longer than 200 characters.";
  return {};
}

}  // namespace pellorin
