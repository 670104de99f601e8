#include "sql/InstallScript.h"

#include <limits>
#include <string_view>

#include "base/AnsiText.h"
#include "base/Text.h"
#include "base/TextCase.h"
#include "files/FileLookup.h"
#include "platform/Paths.h"

namespace pellorin {
namespace {

// The next place of some ASCII characters, in any letter case.
std::size_t Find(std::string_view text, std::string_view wanted, std::size_t from) {
  for (std::size_t at = from; at + wanted.size() <= text.size(); ++at)
    if (EqualIgnoringCase(text.substr(at, wanted.size()), wanted)) return at;
  return std::string_view::npos;
}

std::string Replaced(std::string text, std::string_view wanted, std::string_view replacement,
                     int most = std::numeric_limits<int>::max()) {
  std::size_t at = 0;
  for (int count = 0; count < most && (at = Find(text, wanted, at)) != std::string::npos; ++count) {
    text.replace(at, wanted.size(), replacement);
    at += replacement.size();
  }
  return text;
}

}  // namespace

std::string ReadScriptFile(FileOperations& files, const std::string& programFolder,
                           const std::string& fileName) {
  const std::string path = JoinPath(programFolder, FindIgnoringCase(files, programFolder, fileName));
  const std::string bytes = ReadFile(files, path);
  for (const std::string_view mark : {kUtf8Mark, kUtf16LittleMark, kUtf16BigMark})
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
