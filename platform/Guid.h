// A new GUID (version 4, random bytes of the operating system) in registry form: braces, upper case, 38
// characters. NumberedError kGuidNotCreated when the system gives no random bytes.
#pragma once

#include <string>

namespace pellorin {

std::string GenerateGUID();

}  // namespace pellorin
