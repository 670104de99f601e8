// The conventions of the locale that the environment names (LC_ALL, LC_NUMERIC, LC_TIME, LANG).
#pragma once

#include <string>
#include <vector>

#include "platform/LocaleConventions.h"

namespace pellorin {

// US English for the C locale, and for a locale that is not installed.
LocaleConventions SystemLocaleConventions();

// The names of the locales that are not installed, each once.
std::vector<std::string> LocalesNotInstalled();

}  // namespace pellorin
