#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

namespace pellorin::test {
namespace {

std::string TextOf(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

std::set<std::string> Matches(const std::string& text, const char* pattern) {
  const std::regex expression(pattern);
  std::set<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
    found.insert((*match)[1]);
  return found;
}

std::set<std::string> DocumentedKeys() {
  std::istringstream lines(TextOf(PROJECT_FOLDER "/docs/file-formats.md"));
  std::set<std::string> keys;
  for (std::string line; std::getline(lines, line);) {
    const std::string withoutRemarks = std::regex_replace(line, std::regex(R"(\([^)]*\))"), "");
    if (line.starts_with("| `["))
      keys.merge(Matches(withoutRemarks, R"((?:[|,]|and) *([A-Z]\w+)(?= |,|$))"));
    else if (line.starts_with("| "))
      keys.merge(Matches(line.substr(0, line.find('|', 1)), R"(\b([a-z]+)\b)"));
  }
  return keys;
}

TEST(SettingKeys, AreThoseOfTheDocumentation) {
  std::set<std::string> documented = DocumentedKeys();
  for (const std::string& key : Matches(TextOf(PROJECT_FOLDER "/config/SettingKeys.h"), R"rx(=\s+"(\w+)")rx"))
    EXPECT_EQ(documented.erase(key), 1u) << "docs/file-formats.md does not explain " << key;
  for (const std::string& key : documented) ADD_FAILURE() << "config/SettingKeys.h does not hold " << key;
}

}  // namespace
}  // namespace pellorin::test
