// Tables of test data: tab-separated text with one header line; \r \n \t \0 \\ and \xNN are escapes.
#pragma once

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace pellorin::test {

// Without the header, not unescaped.
inline std::vector<std::vector<std::string>> ReadTable(const std::string& path, std::size_t columns) {
  std::ifstream file(path, std::ios::binary);
  std::string line;
  std::getline(file, line);
  std::vector<std::vector<std::string>> rows;
  while (std::getline(file, line)) {
    std::istringstream text(line);
    auto& fields = rows.emplace_back();
    for (std::string field; std::getline(text, field, '\t');) fields.push_back(field);
    if (fields.size() > columns) throw std::runtime_error("too many fields in " + path + ": " + line);
    fields.resize(columns);
  }
  if (rows.empty()) throw std::runtime_error("no rows in " + path);
  return rows;
}

inline std::string FromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t position = 0; position < hex.size(); position += 2)
    bytes += static_cast<char>(std::stoi(hex.substr(position, 2), nullptr, 16));
  return bytes;
}

inline std::string Unescape(const std::string& text) {
  const std::string letters = "rnt0\\";
  const std::string meanings("\r\n\t\0\\", 5);
  std::string bytes;
  for (std::size_t position = 0; position < text.size(); ++position) {
    if (text[position] != '\\') {
      bytes += text[position];
    } else if (text.at(++position) == 'x') {
      bytes += FromHex(text.substr(position + 1, 2));
      position += 2;
    } else {
      bytes += meanings.at(letters.find(text[position]));
    }
  }
  return bytes;
}

}  // namespace pellorin::test
