#include <gtest/gtest.h>

#include "base/Text.h"
#include "config/NameLists.h"
#include "config/NextRuns.h"
#include "config/ScheduleSummary.h"
#include "tests/config/ServiceFolder.h"

namespace pellorin::test {
namespace {

using Names = std::vector<std::string>;

constexpr auto kToday = std::chrono::November / 23 / 2026;
const std::string kRepeated =
    "frequency=weekly;every=2;days=monday,wednesday;occurstype=every;occursevery=15;span=Minute(s);"
    "starttime=8:00 AM;endtime=6:00 PM;startdate=11/22/2026;enddate=12/31/2026;hasenddate=1";
const std::string kOnce = "frequency=daily;every=1;occurstype=once;occursonce=11:05 PM";

const std::string kDays = "Every 2 weeks on Mon, Wed";
const std::string kMinutes = ", every 15 minutes";
const std::string kHours = " from 8:00 AM to 6:00 PM";
const std::string kDates = ", from 11/22/2026 until 12/31/2026";

void CheckSummaries(const std::string& base, const std::vector<std::pair<std::string, std::string>>& rows) {
  for (const auto& [changed, summary] : rows) {
    Section queue;
    SetValues(queue, base);
    SetValues(queue, changed);
    EXPECT_EQ(ScheduleSummary(queue, LocaleConventions(), kToday), summary) << base << " with " << changed;
  }
}

TEST(ScheduleSummaryTest, SaysWhatTheSettingsMean) {
  CheckSummaries(kRepeated,
                 {{"", kDays + kMinutes + kHours + kDates},
                  {"hasenddate=0;enddate=x", kDays + kMinutes + kHours + ", from 11/22/2026"},
                  {"hasenddate=true;startdate=", kDays + kMinutes + kHours},
                  {"starttime=", kDays + kMinutes + " until 6:00 PM" + kDates},
                  {"endtime=", kDays + kMinutes + " from 8:00 AM" + kDates},
                  {"occursevery= 1 ;span=Hour(s)", kDays + ", every hour" + kHours + kDates},
                  {"every=1;days=SUNDAY/Friday", "Every week on Fri, Sun" + kMinutes + kHours + kDates},
                  {"frequency=daily;every= 3 ;days=", "Every 3 days" + kMinutes + kHours + kDates},
                  {"enddate= 2026-11-23\t", kDays + kMinutes + kHours + ", from 11/22/2026 until 11/23/2026"},
                  {"endtime=1/1/2027 3 PM", kDays + kMinutes + " from 8:00 AM to 3:00 PM" + kDates}});
  CheckSummaries(kOnce, {{"startdate=11/22/2026", "Every day at 11:05 PM, from 11/22/2026"},
                         {"starttime=8:00;endtime=7:00", "Every day at 11:05 PM"},
                         {"occursonce=1/1/2026;days=friday", "Every day at 12:00 AM"}});
}

TEST(ScheduleSummaryTest, ListsWhatIsMissingAndWhatCannotBeRead) {
  CheckSummaries(
      kRepeated,
      {{"every=;days=;occursevery=;span=;starttime= ;endtime= ;startdate=;enddate=",
        "Missing: the number of weeks, the days of the week, the number of hours or minutes, the unit (hours "
        "or minutes), the start time, the end time, the start date, the end date"},
       {"every=x;occursevery=1 0;starttime=15;endtime=24:00;startdate=11/22/26;enddate=",
        "Missing: the end date. Cannot be read: the number of weeks (\"x\"), the number of hours or minutes "
        "(\"1 0\"), the start time (\"15\"), the end time (\"24:00\"), the start date (\"11/22/26\")"},
       {"enddate= the\n\u00E9nd of the next year but one\r\n",
        "Cannot be read: the end date (\"the \u00E9nd of the next year...\")"},
       {"enddate=11/21/2026 23:59", "End Date is before Start Date"},
       {"frequency=daily;every=;occurstype=once;occursonce=noon;endtime=x",
        "Missing: the number of days. Cannot be read: the time of day (\"noon\"), the end time (\"x\")"}});
}

TEST(ScheduleSummaryTest, SaysWhenAValidScheduleDoesNotRunAsItMay) {
  const std::string weeks = "every 2 weeks on Mon, Wed";
  CheckSummaries(
      kRepeated,
      {{"every=0", "Never runs: every 0 weeks on Mon, Wed" + kMinutes + kHours + kDates},
       {"occursevery=-0.5", "Never runs: " + weeks + ", every -0.5 minutes" + kHours + kDates},
       {"days=mon", "Never runs: every 2 weeks on no day" + kMinutes + kHours + kDates},
       {"starttime=6:00 PM;endtime=5:59:59 PM", "End At is before Start At"},
       {"startdate=11/26/2026;enddate=11/29/2026 23:59",
        "Never runs: no Mon or Wed from 11/26/2026 until 11/29/2026 11:59 PM"},
       {"days=sunday;startdate=11/23/2026;enddate=11/29/2026",
        "Every 2 weeks on Sun" + kMinutes + kHours + ", from 11/23/2026 until 11/29/2026"},
       {"occursevery=10;span=Hour(s)", kDays + ", every 10 hours" + kHours + kDates},
       {"endtime=;occursevery=16;span=Hour(s)",
        "Runs only once a day, because 16 hours is longer than 8:00 AM to 11:59:59 PM: " + weeks + kDates},
       {"frequency=", "Occurs is neither Daily nor Weekly"},
       {"span=hours", "Occurs Every is in neither Hour(s) nor Minute(s)"}});
  CheckSummaries(kOnce, {{"hasenddate=1;startdate=0100-01-01;enddate=11/22/2026 23:59",
                          "Is over: every day at 11:05 PM, from 1/1/0100 until 11/22/2026 11:59 PM"}});
}

TEST(ScheduleSummaryTest, NamesAProblemExactlyWhenValidationDoes) {
  const ServiceFolder folder;
  const auto document = folder.New();
  Section& queue = document->Add("Night", SectionType::Queue);
  const Names changes =
      SplitAt("|",
              "every=|every=x|every=0|frequency=|frequency=weekly|days=|days= |days=tuesday|occurstype=once|"
              "occursonce=|occursonce=x|occursonce=1/1/2026|occursevery=|occursevery=x|occursevery=-1|span=|"
              "span= |span=x|starttime= |starttime=15|starttime=3 PM|endtime=|endtime=24:00|endtime=1/1/2026|"
              "startdate=|startdate=1/1/27|startdate=3 PM|startdate=1/1/2027|enddate=|enddate=1/1/27|"
              "enddate=3 PM|hasenddate=0|hasenddate=1");
  for (const std::string& base : {kRepeated, kOnce})
    for (const std::string& first : changes)
      for (const std::string& second : changes) {
        for (const auto& setting : queue.Settings()) setting->Value.clear();
        for (const std::string& values : {base, first, second}) SetValues(queue, values);
        const std::string summary = ScheduleSummary(queue, document->Locale(), kToday);
        const bool isProblem = summary.starts_with("Missing: ") || summary.starts_with("Cannot be read: ") ||
                               summary == "End Date is before Start Date";
        EXPECT_NE(queue.ValidateQueueSettings(), isProblem)
            << Shown(queue) << queue.ValidationError() << summary;
        const bool isRunning = summary.starts_with("Every") || summary.starts_with("Runs only");
        EXPECT_EQ(
            NextRunsInWords(queue.Settings(), document->Locale(), std::chrono::sys_days(kToday)).empty(),
            !isRunning)
            << Shown(queue) << summary;
      }
}

TEST(NextRunsTest, ListsFiveRunsAfterNow) {
  const std::string plain = "Next runs, as this schedule reads:";
  const std::string weeks =
      "Next runs, as this schedule reads (weeks count from that of Start Date, from Monday):";
  const struct {
    std::string base, changed;
    Names runs;
  } rows[] = {
      {kOnce,
       "startdate=11/20/2026;every=2",
       {"Tue 11/24/2026 11:05 PM", "Thu 11/26/2026 11:05 PM", "Sat 11/28/2026 11:05 PM",
        "Mon 11/30/2026 11:05 PM", "Wed 12/2/2026 11:05 PM"}},
      {kOnce,
       "startdate=11/23/2026;enddate=11/24/2026;hasenddate=1",
       {"Mon 11/23/2026 11:05 PM", "Tue 11/24/2026 11:05 PM"}},
      {kOnce,
       "occursonce=12:00 PM",
       {"Tue 11/24/2026 12:00 PM", "Wed 11/25/2026 12:00 PM", "Thu 11/26/2026 12:00 PM",
        "Fri 11/27/2026 12:00 PM", "Sat 11/28/2026 12:00 PM"}},
      {kRepeated,
       "every=1;occursevery=2.5;span=Hour(s)",
       {"Mon 11/23/2026 1:00 PM", "Mon 11/23/2026 3:30 PM", "Mon 11/23/2026 6:00 PM",
        "Wed 11/25/2026 8:00 AM", "Wed 11/25/2026 10:30 AM"}},
      // The week of Sunday, 22 November, ended with it.
      {kRepeated,
       "days=monday;occursevery=9;span=Hour(s)",
       {"Mon 11/30/2026 8:00 AM", "Mon 11/30/2026 5:00 PM", "Mon 12/14/2026 8:00 AM",
        "Mon 12/14/2026 5:00 PM", "Mon 12/28/2026 8:00 AM"}},
      {kRepeated, "days=sunday;occursevery=20;span=Hour(s);enddate=12/6/2026", {"Sun 12/6/2026 8:00 AM"}},
      {kOnce, "every=1.5", {}},
      {kOnce, "startdate=11/20/2026;enddate=11/22/2026;hasenddate=1", {}}};
  for (const auto& row : rows) {
    Section queue;
    SetValues(queue, row.base);
    SetValues(queue, row.changed);
    std::string expected;
    for (const std::string& run : row.runs) expected += "\r\n" + run;
    if (!row.runs.empty())
      expected = (queue.GetValue("frequency") == "weekly" && queue.GetValue("every") != "1" ? weeks : plain) +
                 expected;
    const auto now = std::chrono::sys_days(kToday) + std::chrono::hours(12);
    EXPECT_EQ(NextRunsInWords(queue.Settings(), LocaleConventions(), now), expected)
        << row.base << " with " << row.changed;
  }
}

TEST(NameListsTest, SplitsAtCommasButNotWithinKnownNames) {
  const Names known = {"HOST", "", "host,1433", "HOST,1433,X", ",odd", "\u00C9T\u00C9,1"};
  const std::vector<std::pair<std::string, Names>> rows = {
      {"", {}},
      {"a,,b,", {"a", "", "b", ""}},
      {"a,Host,1433,x,b", {"a", "Host,1433,x", "b"}},
      {"HOST,1433,,HOST,1433,", {"HOST,1433", "", "HOST,1433", ""}},
      {"HOST,14330,xHOST,1433", {"HOST", "14330", "xHOST", "1433"}},
      {"a,,odd", {"a", ",odd"}},
      {"\u00E9t\u00E9,1,2", {"\u00E9t\u00E9,1", "2"}}};
  for (const auto& [text, names] : rows) {
    EXPECT_EQ(SplitNames(text, known), names) << text;
    EXPECT_EQ(JoinNames(names), text);
  }
  EXPECT_EQ(SplitNames("HOST,1433", {}), (Names{"HOST", "1433"}));
  EXPECT_EQ(SplitAt("###", "a####b###"), (Names{"a", "#b", ""}));
  EXPECT_TRUE(ArrayContains({"a", "\u00C9"}, "\u00E9"));
  EXPECT_FALSE(ArrayContains({"ab"}, "a"));
}

TEST(NameListsTest, GainAndLoseNames) {
  struct Row {
    const char *text, *name, *with, *without;
  };
  const Names known = {"H,1"};
  for (const Row& row : {Row{"Q1,Q2", "q1", "Q1,Q2", ",Q2"}, Row{"Q2,Q1", "Q1", "Q2,Q1", "Q2,"},
                         Row{"Q2", "Q1", "Q2,Q1", "Q2"}, Row{"", "Q1", "Q1", ""}, Row{"Q1", "Q1", "Q1", ""},
                         Row{",Q2", "Q1", ",Q2,Q1", ",Q2"}, Row{"Q2,", "Q1", "Q2,Q1", "Q2,"},
                         Row{"Q0,Q1,Q2", "Q1", "Q0,Q1,Q2", "Q0,Q2"}, Row{"a,,,b", "Q1", "a,,b,Q1", "a,,b"},
                         Row{"a,Q1,q1,b", "Q1", "a,Q1,q1,b", "a,,b"}, Row{"Q1,Q1", "Q1", "Q1,Q1", ","},
                         Row{"a,h,1,b", "H,1", "a,h,1,b", "a,b"}, Row{"h", "H,1", "h,H,1", "h"}}) {
    EXPECT_EQ(WithName(row.text, row.name, known), row.with) << row.name << " added to " << row.text;
    EXPECT_EQ(WithoutName(row.text, row.name, known), row.without) << row.name << " taken from " << row.text;
  }
}

}  // namespace
}  // namespace pellorin::test
