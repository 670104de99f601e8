// Which names a section of Pellorin.ini can carry behind its prefix, so that the next start finds it again.
#pragma once

#include <string>
#include <string_view>

namespace pellorin {

// Why the name cannot be used, as a sentence for the user; empty when it can.
std::string NameProblem(std::string_view name);

}  // namespace pellorin
