// One question and its answer over UDP.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace pellorin {

// Asks again once a second while the patience lasts. Nothing when the host is unknown or does not answer.
std::optional<std::string> AskByDatagram(const std::string& host, std::uint16_t port,
                                         const std::string& question, std::chrono::milliseconds patience);

}  // namespace pellorin
