// Dates and times written as the locale does, with four-digit years. What is written reads back as the
// same value (DateTimeText.h).
#pragma once

#include <string>

#include "config/DateTimeText.h"

namespace pellorin {

// The parts that the value has: 11/22/2026 11:05:07 PM, 22.11.2026, 23:05. Seconds unless they are zero.
std::string WriteDateTime(const DateTime& value, const LocaleConventions& locale);

// As WriteDateTime, but a time always has its seconds: 11/22/2026 8:41:00 AM.
std::string WriteMoment(const DateTime& value, const LocaleConventions& locale);

}  // namespace pellorin
