// Lists of names as the settings keep them: joined by ",", compared ignoring letter case. A name that itself
// holds a comma ("HOST,1433") is only recognised if the caller passes it in namesWithComma.
//
//   WithName("a,b", "c", {})     // "a,b,c"
//   WithoutName("a,b,c", "b", {})  // "a,c"
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pellorin {

// The empty text has no elements; "a,,b," has "a", "", "b", "". If several of namesWithComma could be the
// next element, the longest one is.
std::vector<std::string> SplitNames(std::string_view text, const std::vector<std::string>& namesWithComma);
std::string JoinNames(const std::vector<std::string>& names);
bool ArrayContains(const std::vector<std::string>& array, std::string_view text);

// The list with the name as its last element, unless it holds the name already. Both functions collapse ",,"
// to "," in one pass: three commas become two, and a comma at an end of the list stays.
std::string WithName(std::string_view text, std::string_view name,
                     const std::vector<std::string>& namesWithComma);
// The list with every element of that name emptied.
std::string WithoutName(std::string_view text, std::string_view name,
                        const std::vector<std::string>& namesWithComma);

}  // namespace pellorin
