// One question and its answer over a TCP connection of its own.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/NetworkAnswer.h"

namespace pellorin {

// Connects to all addresses of the host at once and asks the first that accepts. Reads until `isWhole`
// accepts the bytes so far as the answer. The patience covers everything except looking up the host's name.
NetworkAnswer AskByStream(const std::string& host, std::uint16_t port, std::string_view question,
                          std::chrono::milliseconds patience,
                          const std::function<bool(std::string_view answer)>& isWhole);

}  // namespace pellorin
