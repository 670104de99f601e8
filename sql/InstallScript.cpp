#include "sql/InstallScript.h"

#include <limits>
#include <string_view>

#include "base/AnsiText.h"
#include "base/TextCase.h"
#include "files/FileLookup.h"
#include "platform/Paths.h"

namespace pellorin {
namespace {

// ASCII letters only: positions in the text stay what they are.
char Lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::size_t Find(const std::string& text, std::string_view lowerWanted, std::size_t from) {
  for (std::size_t at = from; at + lowerWanted.size() <= text.size(); ++at) {
    std::size_t same = 0;
    while (same < lowerWanted.size() && Lower(text[at + same]) == lowerWanted[same]) ++same;
    if (same == lowerWanted.size()) return at;
  }
  return std::string::npos;
}

std::string Replaced(std::string text, std::string_view lowerWanted, std::string_view replacement,
                     int most = std::numeric_limits<int>::max()) {
  std::size_t at = 0;
  for (int count = 0; count < most && (at = Find(text, lowerWanted, at)) != std::string::npos; ++count) {
    text.replace(at, lowerWanted.size(), replacement);
    at += replacement.size();
  }
  return text;
}

}  // namespace

std::string ReadScriptFile(FileOperations& files, const std::string& programFolder,
                           const std::string& fileName) {
  const std::string path = JoinPath(programFolder, FindIgnoringCase(files, programFolder, fileName));
  const std::string bytes = ReadFile(files, path);
  for (const std::string_view mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"})
    if (bytes.starts_with(mark))
      throw NumberedError(0, ErrorSource("InstallScript"),
                          "The script is saved in Unicode. Please save it as ANSI text (code page 1252).",
                          path);
  return AnsiToUtf8(bytes);
}

std::string AlteringScript(const std::string& script) {
  return Replaced(script, "create procedure", "ALTER PROCEDURE", 1);
}

std::string ScriptWithoutBlock(const std::string& script) {
  return Replaced(Replaced(script, "--sqlstart", "/* --sqlstart"), "--sqlend", "--sqlend */");
}

}  // namespace pellorin
