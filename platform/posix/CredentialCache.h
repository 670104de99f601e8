// A file of Kerberos tickets, read only as far as to learn whether one of them is still valid.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace pellorin {

// When the last of the tickets ends, in seconds since 1970; 0 for a file without tickets. Nothing unless the
// bytes are a whole file of version 4 of MIT's format.
std::optional<std::uint32_t> LastTicketEnd(std::string_view bytes);

}  // namespace pellorin
