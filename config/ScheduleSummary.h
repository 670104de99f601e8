// A queue's schedule in one line of plain words: "Every 2 weeks on Mon, Wed, every 15 minutes from 8:00 AM to
// 6:00 PM, from 11/22/2026 until 12/31/2026". Dates and times are in the locale's form. If validation refuses
// a setting of the schedule, and only then, the line says what is missing, what cannot be read, or that End
// Date is before Start Date. The line also says if a valid schedule never runs, is over, or runs less often
// than its settings suggest.
#pragma once

#include <chrono>
#include <string>

#include "platform/SystemLocale.h"

namespace pellorin {

class Section;

std::string ScheduleSummary(const Section& queue, const LocaleConventions& locale,
                            const std::chrono::year_month_day& today);

}  // namespace pellorin
