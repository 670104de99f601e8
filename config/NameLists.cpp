#include "config/NameLists.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "base/Text.h"
#include "base/TextCase.h"

namespace pellorin {
namespace {

std::string Join(std::span<const std::string> names) {
  std::string text;
  for (const std::string& name : names) {
    if (&name != &names.front()) text += ',';
    text += name;
  }
  return text;
}

// How many of the parts, from the first, make up the list's next element. A name with commas takes as many
// parts as it has.
std::size_t PartsOfNextElement(std::span<const std::string> parts,
                               const std::vector<std::string>& namesWithComma) {
  std::size_t longest = 1;
  for (const std::string& name : namesWithComma) {
    const std::size_t count = SplitAt(",", name).size();
    if (count > longest && count <= parts.size() && EqualIgnoringCase(Join(parts.first(count)), name))
      longest = count;
  }
  return longest;
}

// Whether a plain split would find the name. Does not split: most lists are long and stay as they are.
bool IsElement(std::string_view text, std::string_view name) {
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    if (EqualIgnoringCase(text.substr(begin, end - begin), name)) return true;
    begin = end + 1;
  }
  return false;
}

bool IsSettled(std::string_view text, std::string_view name, bool isWanted,
               const std::vector<std::string>& namesWithComma) {
  return namesWithComma.empty() && !text.empty() && text.find(",,") == std::string_view::npos &&
         IsElement(text, name) == isWanted;
}

std::string WithSingleCommas(std::string text) {
  for (std::size_t at = 0; (at = text.find(",,", at)) != std::string::npos; ++at) text.erase(at, 1);
  return text;
}

}  // namespace

std::vector<std::string> SplitNames(std::string_view text, const std::vector<std::string>& namesWithComma) {
  std::vector<std::string> allParts = SplitAt(",", text);
  if (namesWithComma.empty()) return allParts;
  std::vector<std::string> names;
  for (std::span<const std::string> parts = allParts; !parts.empty();) {
    const std::size_t count = PartsOfNextElement(parts, namesWithComma);
    names.push_back(Join(parts.first(count)));
    parts = parts.subspan(count);
  }
  return names;
}

std::string JoinNames(const std::vector<std::string>& names) {
  return Join(names);
}

bool ArrayContains(const std::vector<std::string>& array, std::string_view text) {
  return std::any_of(array.begin(), array.end(),
                     [text](const std::string& element) { return EqualIgnoringCase(element, text); });
}

std::string WithName(std::string_view text, std::string_view name,
                     const std::vector<std::string>& namesWithComma) {
  if (IsSettled(text, name, true, namesWithComma)) return std::string(text);
  std::vector<std::string> names = SplitNames(text, namesWithComma);
  if (!ArrayContains(names, name)) names.emplace_back(name);
  return WithSingleCommas(JoinNames(names));
}

std::string WithoutName(std::string_view text, std::string_view name,
                        const std::vector<std::string>& namesWithComma) {
  if (IsSettled(text, name, false, namesWithComma)) return std::string(text);
  std::vector<std::string> names = SplitNames(text, namesWithComma);
  for (std::string& element : names)
    if (EqualIgnoringCase(element, name)) element.clear();
  return WithSingleCommas(JoinNames(names));
}

}  // namespace pellorin
