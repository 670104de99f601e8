// When a queue runs next, as its schedule reads: every so many days counted from Start Date, or in every so
// many weeks, counted from the week of Start Date, which begins on Monday. Without a start date it counts
// from today. Times are those of a wall clock: no time zone, no daylight saving. The service decides when the
// queue really runs.
#pragma once

#include <chrono>
#include <string>

#include "config/SettingList.h"
#include "platform/LocaleConventions.h"

namespace pellorin {

// A line that says how it counts, and a line for each of the next five runs: "Mon 11/23/2026 8:00 AM". Empty
// when the schedule cannot be read, never runs, is over, or counts in anything but whole days or weeks.
std::string NextRunsInWords(const SettingList& queue, const LocaleConventions& locale,
                            std::chrono::sys_seconds now);

}  // namespace pellorin
