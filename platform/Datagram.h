// One question and its answer over UDP.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "platform/NetworkAnswer.h"

namespace pellorin {

// Asks again once a second until an answer comes or the patience ends. The outcome is never Closed.
NetworkAnswer AskByDatagram(const std::string& host, std::uint16_t port, const std::string& question,
                            std::chrono::milliseconds patience);

}  // namespace pellorin
