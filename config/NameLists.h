// Lists of names as the settings keep them: joined by ",", compared ignoring letter case. A name may itself
// hold a comma ("HOST,1433"); such names are told apart only where the caller hands them in as
// namesWithComma.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pellorin {

// The empty text has no elements; "a,,b," has "a", "", "b", "". Where several of namesWithComma could be the
// next element, the longest is.
std::vector<std::string> SplitNames(std::string_view text, const std::vector<std::string>& namesWithComma);
std::string JoinNames(const std::vector<std::string>& names);
bool ArrayContains(const std::vector<std::string>& array, std::string_view text);

// The list with the name as its last element, unless it holds it already; the list with every such element
// blanked out. Both then make one comma of each two in a single pass: three become two, and a comma at an end
// of the list stays.
std::string WithName(std::string_view text, std::string_view name,
                     const std::vector<std::string>& namesWithComma);
std::string WithoutName(std::string_view text, std::string_view name,
                        const std::vector<std::string>& namesWithComma);

}  // namespace pellorin
