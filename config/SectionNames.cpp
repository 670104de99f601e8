#include "config/SectionNames.h"

#include "base/AnsiText.h"
#include "base/Text.h"
#include "base/TextCase.h"

namespace pellorin {
namespace {

constexpr std::size_t kLongestName = 200;  // bytes; the buffer for all names holds 10,000
constexpr const char* kTooLong = "A name cannot be longer than 200 characters.";
constexpr const char* kOutsideCodePage =
    "The name holds a character that Pellorin.ini cannot hold (it is outside code page 1252).";

}  // namespace

std::string NameProblem(std::string_view name) {
  if (name.find_first_of(":]|") != std::string_view::npos || HoldsControlCharacter(name))
    return "A name cannot hold a colon, a closing bracket, a vertical bar or a control character.";
  if (const std::string problem = ValueProblem(name); !problem.empty()) return problem;
  return Utf8ToAnsi(name)->size() > kLongestName ? kTooLong : "";
}

std::string ValueProblem(std::string_view text) {
  if (HoldsControlCharacter(text)) return "A name cannot hold a control character.";
  if (text.starts_with(' ') || text.ends_with(' ')) return "A name cannot begin or end with a blank.";
  if (!Utf8ToAnsi(text)) return kOutsideCodePage;
  return {};
}

bool IsValidQueueName(std::string_view name) {
  return name.find_first_of(";:*?\"<>|'`,{}][") == std::string_view::npos;
}

std::string QueueNameProblem(std::string_view name) {
  if (HoldsControlCharacter(name)) return "A name cannot hold a control character.";
  const std::string folded = FoldCase(name);
  if (folded == "defaultqueue") return "defaultQUEUE is the template of new queues.";
  if (folded.find(".xml") != std::string::npos)
    return "A name cannot hold \".xml\": it would come back without it.";
  if (!Utf8ToAnsi(name)) return kOutsideCodePage;
  if (name.size() > kLongestName) return kTooLong;  // file systems allow 255 bytes
  return {};
}

}  // namespace pellorin
