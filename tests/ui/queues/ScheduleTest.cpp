// The schedule of a queue on its page: what each control stands for.
#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

class Schedule : public WindowFixture {
 protected:
  void Open() {
    ASSERT_TRUE(Start(kMailOne + kAdmin + "SchedulerPassword=<\\_\r\n"));
    ClickTab(2);
  }
};

TEST_F(Schedule, EachBoxStandsForItsDay) {
  WriteQueue("Q", Replaced(kDailyQueue, "daily\"", "weekly\" days=\"\""));
  Open();
  Click("chkMonday chkTuesday chkWednesday chkThursday chkFriday chkSaturday chkSunday");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q", "days"), "monday,tuesday,wednesday,thursday,friday,saturday,sunday");
}

TEST_F(Schedule, AStartTimeOfBlanksShowsTheDefault) {
  WriteQueue("Q", Replaced(kDailyQueue, "12:00 AM", "  "));
  Open();
  EXPECT_EQ(Text("txtStartTime"), "12:00 AM");
}

}  // namespace
}  // namespace pellorin::test
