// Tables of test data: tab-separated text with one header line; \r \n \t \0 \\ and \xNN are escapes.
#pragma once

#include <string>
#include <vector>

namespace pellorin::test {

// Without the header, not unescaped.
std::vector<std::vector<std::string>> ReadTable(const std::string& path, std::size_t columns);
std::string Unescape(const std::string& text);
std::string FromHex(const std::string& hex);

}  // namespace pellorin::test
