// The window of a user whose locale is not the American one.
#include <QDate>

#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

class Locale : public WindowFixture {};

TEST_F(Locale, IsFollowedByPickersNumbersSummaryAndMail) {
  locale.dateOrder = DateOrder::DayMonthYear;
  locale.dateSeparator = ".";
  locale.twelveHourClock = false;
  locale.am = locale.pm = "";
  locale.decimalSeparator = ",";
  locale.thousandsSeparator = ".";
  WriteQueue("Bare", "<queue/>");
  WriteQueue("German",
             Replaced(Replaced(kDailyQueue, "11/22/2026", "22.11.2026"), "11/22/2926", "31.12.2926"));
  ASSERT_TRUE(Start(kMailOne + kAdmin + "SchedulerPassword=<\\_\r\n"));
  ClickTab(2);
  const std::string today = QDate::currentDate().toString(QStringLiteral("d.M.yyyy")).toStdString();
  EXPECT_EQ(Text("txtStartDate"), today);
  Choose("cmbQueues", 1);
  Click("optEndDate txtStartDate");
  Press("Home Up");  // the day
  EXPECT_EQ(Text("lblScheduleSummary"), "Every day at 23:05, from 23.11.2026 until 31.12.2926");
  ClickTab(0);
  Replace("txtConnectionTimeout", "1.000,5");
  SaveSuccessfully();
  EXPECT_EQ(Stored("MAIL:one", "ConnectionTimeout"), "1.000,5");
  messages.WillAsk("Email Address", "Please enter an email address to send the test email to", "a@b");
  messages.WillShowSome();
  Click("btnTestMailServer");
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_NE(sent[0].message.find("Send On: " + today + " "), std::string::npos) << sent[0].message;
}

}  // namespace
}  // namespace pellorin::test
