// The texts about and within a queue's settings: its schedule in words, its lists of names.
#include <gtest/gtest.h>

#include "config/NameLists.h"
#include "config/ScheduleSummary.h"
#include "platform/TextSplit.h"
#include "tests/config/ServiceFolder.h"

namespace pellorin::test {
namespace {

using Names = std::vector<std::string>;

const std::string kRepeated =
    "frequency=weekly;every=2;days=monday,wednesday;occurstype=every;occursevery=15;span=Minute(s);"
    "starttime=8:00 AM;endtime=6:00 PM;startdate=11/22/2026;enddate=12/31/2026;hasenddate=1";
const std::string kOnce = "frequency=daily;every=1;occurstype=once;occursonce=11:05 PM";

void CheckSummaries(const std::string& base, const std::vector<std::pair<std::string, std::string>>& rows) {
  for (const auto& [changed, summary] : rows) {
    Section queue;
    SetValues(queue, base);
    SetValues(queue, changed);
    EXPECT_EQ(ScheduleSummary(queue, LocaleConventions()), summary);
  }
}

TEST(ScheduleSummaryTest, SaysWhatTheSettingsMean) {
  const std::string days = "Every 2 weeks on Mon, Wed";
  const std::string minutes = ", every 15 minutes";
  const std::string times = " from 8:00 AM to 6:00 PM";
  const std::string dates = ", from 11/22/2026 until 12/31/2026";
  CheckSummaries(kRepeated,
                 {{"", days + minutes + times + dates},
                  {"hasenddate=0;enddate=x", days + minutes + times + ", from 11/22/2026"},
                  {"hasenddate=true;startdate=", days + minutes + times},
                  {"starttime=", days + minutes + " until 6:00 PM" + dates},
                  {"endtime=", days + minutes + " from 8:00 AM" + dates},
                  {"starttime=;endtime=", days + minutes + dates},
                  {"occursevery= 1 ;span=Hour(s)", days + ", every hour" + times + dates},
                  {"every=1;days=SUNDAY/Friday", "Every week on Fri, Sun" + minutes + times + dates},
                  {"frequency=daily;every= 3 ;days=", "Every 3 days" + minutes + times + dates},
                  {"enddate= 2026-11-22\t", days + minutes + times + ", from 11/22/2026 until 11/22/2026"},
                  {"enddate=11/21/2026 23:59", "The end date lies before the start date."}});
  CheckSummaries(kOnce, {{"", "Every day at 11:05 PM"},
                         {"startdate=11/22/2026", "Every day at 11:05 PM, from 11/22/2026"},
                         {"starttime=8:00;endtime=9:00", "Every day at 11:05 PM"},
                         {"frequency=weekly;days=friday", "Every week on Fri at 11:05 PM"}});
}

TEST(ScheduleSummaryTest, ListsAllThatIsMissing) {
  CheckSummaries("", {{"",
                       "Missing: a frequency (Daily or Weekly), a number of days or weeks, a number of hours "
                       "or minutes, the unit (hours or minutes)"}});
  CheckSummaries(kRepeated,
                 {{"every=x;days=mon;occursevery=;span=hours;starttime=x;endtime= ;startdate=x;enddate=",
                   "Missing: a number of weeks, the days of the week, a number of hours or minutes, the unit "
                   "(hours or minutes), the start time, the end time, the start date, the end date"},
                  {"startdate=", "Missing: the start date"},
                  {"starttime=11/22/2026;enddate=8:00", "Missing: the start time, the end date"}});
  CheckSummaries(kOnce, {{"frequency=Daily", "Missing: a frequency (Daily or Weekly)"},
                         {"every=;occursonce=11/22/2026", "Missing: a number of days, the time of day"},
                         {"endtime=x", "Missing: the end time"}});
}

TEST(ScheduleSummaryTest, NamesAProblemWheneverValidationDoes) {
  const ServiceFolder folder;
  const auto document = folder.New();
  Section& queue = document->Add("Night", SectionType::Queue);
  std::vector<std::string> changes;
  for (const std::string name : {"frequency", "every", "days", "occurstype", "occursonce", "occursevery",
                                 "span", "starttime", "endtime", "startdate", "enddate", "hasenddate"})
    for (const char* value : {"", " ", "x", "1", "weekly", "once", "8:00", "1/1/2027", "1/1/2026 7:00"})
      changes.push_back(name + "=" + value);
  int refused = 0;
  for (const std::string& base : {kRepeated, kOnce})
    for (const std::string& first : changes)
      for (const std::string& second : changes) {
        for (const auto& setting : queue.Settings()) setting->Value.clear();
        for (const std::string& values : {base, first, second}) SetValues(queue, values);
        if (queue.ValidateQueueSettings()) continue;
        ++refused;
        const std::string summary = ScheduleSummary(queue, document->Locale());
        EXPECT_TRUE(summary.starts_with("Missing: ") || summary.starts_with("The end date lies"))
            << Shown(queue) << "\n"
            << queue.ValidationError() << summary;
      }
  EXPECT_GT(refused, 1000);
}

TEST(NameListsTest, SplitsAtCommasButNotWithinKnownNames) {
  const Names known = {"HOST", "", "host,1433", "HOST,1433,X", ",odd", "\u00C9T\u00C9,1"};
  const std::vector<std::pair<std::string, Names>> rows = {
      {"", {}},
      {",", {"", ""}},
      {"a,,b,", {"a", "", "b", ""}},
      {"HOST,1433", {"HOST,1433"}},
      {"a,Host,1433,x,b", {"a", "Host,1433,x", "b"}},
      {"HOST,1433,,HOST,1433,", {"HOST,1433", "", "HOST,1433", ""}},
      {"HOST,14330,xHOST,1433", {"HOST", "14330", "xHOST", "1433"}},
      {"HOST", {"HOST"}},
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
  for (const Row& row : {Row{"Q1,Q2", "q1", "Q1,Q2", ",Q2"}, Row{"Q2,Q1", "Q1", "Q2,Q1", "Q2,"},
                         Row{"Q2", "Q1", "Q2,Q1", "Q2"}, Row{"", "Q1", "Q1", ""}, Row{"Q1", "Q1", "Q1", ""},
                         Row{",Q2", "Q1", ",Q2,Q1", ",Q2"}, Row{"Q2,", "Q1", "Q2,Q1", "Q2,"},
                         Row{"Q0,Q1,Q2", "Q1", "Q0,Q1,Q2", "Q0,Q2"}, Row{"a,,,b", "Q1", "a,,b,Q1", "a,,b"},
                         Row{"a,Q1,q1,b", "Q1", "a,Q1,q1,b", "a,,b"}, Row{"Q1,Q1", "Q1", "Q1,Q1", ","},
                         Row{"a,h,1,b", "H,1", "a,h,1,b", "a,b"}, Row{"h", "H,1", "h,H,1", "h"}}) {
    Names known = {"H,1"};
    for (int round = 0; round < 2; ++round) {
      EXPECT_EQ(WithName(row.text, row.name, known), row.with) << row.text;
      EXPECT_EQ(WithoutName(row.text, row.name, known), row.without) << row.text;
      if (std::string(row.name).find(',') == std::string::npos) known.clear();
    }
  }
}

}  // namespace
}  // namespace pellorin::test
