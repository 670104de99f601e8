#include "tests/support/TestData.h"

#include <fstream>
#include <stdexcept>

namespace pellorin::test {
namespace {

std::vector<std::string> SplitAtTabs(const std::string& line) {
  std::vector<std::string> fields;
  std::size_t begin = 0;
  for (std::size_t tab = line.find('\t'); tab != std::string::npos; tab = line.find('\t', begin)) {
    fields.push_back(line.substr(begin, tab - begin));
    begin = tab + 1;
  }
  fields.push_back(line.substr(begin));
  return fields;
}

char ByteOf(const std::string& twoDigits) {
  std::size_t used = 0;
  const int value = std::stoi(twoDigits, &used, 16);
  if (used != 2) throw std::invalid_argument("no byte: " + twoDigits);
  return static_cast<char>(value);
}

}  // namespace

std::vector<std::vector<std::string>> ReadTable(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string line;
  if (!std::getline(file, line)) throw std::runtime_error("cannot read " + path);
  const std::size_t columns = SplitAtTabs(line).size();
  std::vector<std::vector<std::string>> rows;
  while (std::getline(file, line)) {
    if (line.empty()) continue;
    rows.push_back(SplitAtTabs(line));
    if (rows.back().size() > columns) throw std::runtime_error("too many fields in " + path + ": " + line);
    rows.back().resize(columns);
  }
  if (rows.empty()) throw std::runtime_error("no rows in " + path);
  return rows;
}

std::string Unescape(const std::string& text) {
  std::string bytes;
  for (std::size_t position = 0; position < text.size(); ++position) {
    if (text[position] != '\\') {
      bytes += text[position];
      continue;
    }
    switch (position + 1 < text.size() ? text[++position] : '\0') {
      case 'r':
        bytes += '\r';
        break;
      case 'n':
        bytes += '\n';
        break;
      case 't':
        bytes += '\t';
        break;
      case '0':
        bytes += '\0';
        break;
      case '\\':
        bytes += '\\';
        break;
      case 'x':
        bytes += ByteOf(text.substr(position + 1, 2));
        position += 2;
        break;
      default:
        throw std::invalid_argument("unknown escape in: " + text);
    }
  }
  return bytes;
}

std::string FromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t position = 0; position < hex.size(); position += 2) {
    bytes += ByteOf(hex.substr(position, 2));
  }
  return bytes;
}

}  // namespace pellorin::test
