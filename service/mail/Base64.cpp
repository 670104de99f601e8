#include "service/mail/Base64.h"

#include <cstddef>

namespace pellorin {

std::string Base64(std::string_view bytes) {
  std::string text;
  for (std::size_t index = 0; index < bytes.size(); index += 3) {
    const std::string_view group = bytes.substr(index, 3);
    unsigned bits = 0;
    for (std::size_t place = 0; place < 3; ++place)
      bits = bits << 8 | (place < group.size() ? static_cast<unsigned char>(group[place]) : 0u);
    for (unsigned place = 0; place < 4; ++place)
      text += place <= group.size() ? kBase64Characters[bits >> (18 - 6 * place) & 0x3F] : '=';
  }
  return text;
}

std::string FromBase64(std::string_view text) {
  std::string bytes;
  unsigned bits = 0;
  unsigned count = 0;  // of the bits that do not yet make a byte
  for (const char character : text) {
    const std::size_t value = kBase64Characters.find(character);
    if (value == std::string_view::npos) break;
    bits = bits << 6 | static_cast<unsigned>(value);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count & 0xFF);
  }
  return bytes;
}

}  // namespace pellorin
