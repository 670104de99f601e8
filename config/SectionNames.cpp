#include "config/SectionNames.h"

#include <algorithm>

#include "platform/AnsiText.h"
#include "platform/TextCase.h"

namespace pellorin {
namespace {

constexpr std::size_t kLongestName = 200;  // bytes; the buffer for all names holds 10,000
constexpr const char* kTooLong = "A name cannot be longer than 200 characters.";
constexpr const char* kOutsideCodePage =
    "The name holds a character that Pellorin.ini cannot hold (it is outside code page 1252).";

bool HoldsControlCharacter(std::string_view name) {
  return std::any_of(name.begin(), name.end(), [](char character) {
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F;
  });
}

}  // namespace

std::string NameProblem(std::string_view name) {
  if (name.find_first_of(":]|") != std::string_view::npos || HoldsControlCharacter(name))
    return "A name cannot hold a colon, a closing bracket, a vertical bar or a control character.";
  if (name.starts_with(' ') || name.ends_with(' ')) return "A name cannot begin or end with a blank.";
  const auto ansiName = Utf8ToAnsi(name);
  if (!ansiName) return kOutsideCodePage;
  if (ansiName->size() > kLongestName) return kTooLong;
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
