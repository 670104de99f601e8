// Host names with letters outside ASCII, as the name service knows them.
#pragma once

#include <string>

namespace pellorin {

// "müller.example" becomes "xn--mller-kva.example", in every locale. A name of ASCII letters stays as it is,
// addresses too; so does one that cannot be converted, which the name service then refuses.
std::string AsciiHostName(const std::string& host);

}  // namespace pellorin
