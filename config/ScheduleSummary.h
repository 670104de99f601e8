// A queue's schedule in one line of plain words: "Every 2 weeks on Mon, Wed, every 15 minutes from 8:00 AM to
// 6:00 PM, from 11/22/2026 until 12/31/2026". Dates and times stand in it as the locale writes them. Where
// the settings make no schedule the line says what is missing ("Missing: the start time, ...") or wrong; it
// does so whenever validation refuses one of them, and also where they say nothing that could be put in
// words.
#pragma once

#include <string>

#include "config/Section.h"
#include "platform/SystemLocale.h"

namespace pellorin {

std::string ScheduleSummary(const Section& queue, const LocaleConventions& locale);

}  // namespace pellorin
