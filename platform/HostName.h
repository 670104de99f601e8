// Host names with letters outside ASCII, written as the name service knows them.
#pragma once

#include <string>

namespace pellorin {

// "müller.example" becomes "xn--mller-kva.example", in every locale. Addresses and names in ASCII stay as
// they are. So does a name that cannot be converted; the name service then refuses it.
std::string AsciiHostName(const std::string& host);

}  // namespace pellorin
