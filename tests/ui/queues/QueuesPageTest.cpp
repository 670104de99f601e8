// The page of the queues, driven by keys and clicks over a real service folder. What counts is what
// the saved files hold.
#include <QDate>
#include <filesystem>

#include "config/DateTimeText.h"
#include "files/FileLookup.h"
#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

const std::string kInstances = kMailOne +
                               "[SQL:A]\r\nDefaultFormat=Text\r\nPrimaryMailServer=one\r\nQueues=Q1,Q2\r\n"
                               "[SQL:B]\r\nDefaultFormat=Text\r\nPrimaryMailServer=one\r\nQueues=Q2\r\n" +
                               kAdmin + "SchedulerPassword=<\\_\r\n";  // "Z2"

class QueuesPageTest : public WindowFixture {
 protected:
  bool HasQueue(const std::string& name) const {
    return folder.Has("Service/QUEUEDefinitions/" + name + ".xml");
  }
  void Open(const std::string& ini = kInstances) {
    ASSERT_TRUE(Start(ini));
    ClickTab(2);
  }
  std::string SelectedServers() const { return Lines("lstQueueApplServers", true); }
  void ClickLine(const std::string& list, int row, bool twice = false) const {
    auto& box = Find<QListWidget>(list);
    ScrollTo(box);
    const QPoint place = box.viewport()->mapTo(window.get(), box.visualItemRect(box.item(row)).center());
    ClickAt(place);
    if (twice) QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, place);
  }
  // Opens help, pastes field and expression; then Enter, or Escape.
  void WillFill(const std::string& field, const std::string& value, Qt::Key end = Qt::Key_Return) {
    InDialog([=, this](const DialogUser& user) {
      log.clear();
      user.Press(Qt::Key_F1);
      EXPECT_EQ(log, Names{program + "/Pellorin.chm|ConfigurationGuide.htm#QueuesTab"});
      user.Paste("cmbField", field + "\n");
      user.Paste("txtValue", "\t" + value);
      user.Press(end);
    });
  }
};

TEST_F(QueuesPageTest, StoresTheDefaultsOfWhatAQueueLacks) {
  WriteQueue("Bare", "<queue/>");
  Open();
  const QDate day = QDate::currentDate();
  EXPECT_EQ(
      OnOf("chkMonday txtOccursOnce txtOccursEvery cmbSpan txtStartTime txtEndTime txtStartDate txtEndDate "
           "lstQueueApplServers lstQueueFilter btnAddQueueFilter"),
      "txtOccursOnce txtStartDate");
  SaveSuccessfully();
  if (QDate::currentDate() != day) GTEST_SKIP() << "a new day began";
  const std::string today = day.toString(QStringLiteral("M/d/yyyy")).toStdString();
  const std::string now = Stored("Bare", "occursonce");
  EXPECT_TRUE(IsDate(now, LocaleConventions())) << now;
  EXPECT_EQ(QueueFile("Bare"),
            "<queue frequency=\"daily\" every=\"1\" occurstype=\"once\" occursonce=\"" + now +
                "\" occursevery=\"1\" span=\"\" starttime=\"12:00 AM\" startdate=\"" + today +
                "\" endtime=\"11:59:59 PM\" enddate=\"" + today +
                "\" hasenddate=\"0\" title=\"\" queuebydefault=\"none\" queuebydefaultservers=\"\"/>\n");
  WriteQueue("Bare", "<queue starttime=\"  \"/>");
  Open();
  EXPECT_EQ(Text("txtStartTime"), "12:00 AM");
}

TEST_F(QueuesPageTest, ShowsWhatIsStoredAndStoresNoMore) {
  struct Row {
    std::string from, to, checked;
    bool isReworded;  // the stored word differs from the one that the chosen option stores
  };
  const Row rows[] = {
      {"daily\"", "weekly\" days=\"MONDAY,friday\"",
       "optWeekly chkMonday chkFriday optOccursOnce optNoEndDate optQueueNone", false},
      {"once\"", "every\"", "optDaily optOccursEvery optNoEndDate optQueueNone", false},
      {"hasenddate=\"0", "hasenddate=\"1", "optDaily optOccursOnce optEndDate optQueueNone", false},
      {"hasenddate=\"0", "hasenddate=\"yes", "optDaily optOccursOnce optNoEndDate optQueueNone", true},
      {"23:05", "at noon", "optDaily optOccursOnce optNoEndDate optQueueNone", false},
      {"queuebydefault=\"none", "queuebydefault=\"some", "optDaily optOccursOnce optNoEndDate", false},
      {"none\" queuebydefaultservers=\"", "ALL\" queuebydefaultservers=\"B",
       "optDaily optOccursOnce optNoEndDate optQueueAll", true}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.to);
    WriteQueue("Q", Replaced(kDailyQueue, row.from, row.to));
    Open();
    EXPECT_EQ(Checked("optDaily optWeekly chkMonday chkTuesday chkWednesday chkThursday chkFriday "
                      "chkSaturday chkSunday optOccursOnce optOccursEvery optEndDate optNoEndDate "
                      "optQueueNone optQueueAll optQueueFilter"),
              row.checked);
    EXPECT_EQ(IsModified(), row.isReworded);
    EXPECT_EQ(SelectedServers(), row.to.starts_with("ALL") ? "B" : "");
  }
  EXPECT_EQ(Text("lblScheduleSummary"), "Every day at 11:05 PM, from 11/22/2026");
  EXPECT_TRUE(Text("lblNextRuns").starts_with("Next runs, as this schedule reads:")) << Text("lblNextRuns");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q", "queuebydefault"), "all");
  EXPECT_EQ(Stored("SQL:B", "Queues"), "Q2,Q");
}

TEST_F(QueuesPageTest, RefusesAnUnknownFrequencyAndShowsTheRest) {
  WriteQueue("Q", Replaced(kDailyQueue, "daily", "Daily"));
  messages.WillShow(Critical("Incorrect 'Occurs' value. Possible values are Daily or Weekly."));
  Open();
  EXPECT_EQ(Checked("optDaily optWeekly optOccursOnce"), "optOccursOnce");
  EXPECT_FALSE(IsOn("chkMonday"));
  EXPECT_EQ(Text("txtQueueTitle"), "t");
  EXPECT_FALSE(IsModified());
  Click("optWeekly chkSunday chkMonday chkTuesday chkWednesday chkThursday chkFriday chkSaturday");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q", "frequency days"), "weekly|monday,tuesday,wednesday,thursday,friday,saturday,sunday");
}

TEST_F(QueuesPageTest, EveryControlStoresItsKey) {
  WriteQueue("Q", Replaced(Replaced(kDailyQueue, "daily\"", "weekly\" days=\"MONDAY,friday\""), "11/22/2026",
                           "11/22/26"));
  Open();
  EXPECT_EQ(Text("lblScheduleSummary"), "Cannot be read: the start date (\"11/22/26\")");
  const std::string year = std::to_string(QDate::currentDate().year());
  Replace("txtStartDate", "1/5/" + year.substr(2));
  Replace("txtQueueTitle", "New title");
  Replace("txtEvery", "3");
  Click("chkSunday optOccursEvery");
  Replace("txtOccursEvery", "20");
  Choose("cmbSpan", 1);
  Click("txtStartTime");
  Press("Home Up");  // the hour
  Click("optEndDate");
  Paste("txtEndDate", "12/22/2926\n");
  EXPECT_EQ(Text("lblScheduleSummary"),
            "Every 3 weeks on Mon, Fri, Sun, every 20 minutes from 1:00 AM to 11:59:59 PM, from 1/5/" + year +
                " until 12/22/2926");
  EXPECT_EQ(OnOf("chkMonday txtOccursOnce txtOccursEvery cmbSpan txtStartTime txtEndTime txtEndDate"),
            "chkMonday txtOccursEvery cmbSpan txtStartTime txtEndTime txtEndDate");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q",
                   "title frequency every days occurstype occursonce occursevery span starttime endtime "
                   "startdate enddate hasenddate"),
            "New title|weekly|3|monday,friday,sunday|every|23:05|20|Minute(s)|1:00 AM|11:59:59 PM|1/5/" +
                year + "|12/22/2926|1");
  EXPECT_EQ(Text("lblEverySpan frmOccurance"), "Week|Weekly");
  Click("optNoEndDate optDaily optOccursOnce");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q", "hasenddate enddate frequency occurstype"), "0|12/22/2926|daily|once");
  EXPECT_EQ(OnOf("chkMonday txtOccursOnce txtOccursEvery txtEndDate"), "txtOccursOnce");
  EXPECT_EQ(Text("lblEverySpan frmOccurance"), "Day|Daily");
}

TEST_F(QueuesPageTest, KeepsTheQueuesOfEachInstance) {
  WriteQueue("Q1",
             Replaced(kDailyQueue, "none\" queuebydefaultservers=\"", "all\" queuebydefaultservers=\"A"));
  WriteQueue("Q2", kDailyQueue);
  Open(Replaced(kInstances, "[ADMIN", "[SQL:H,1]\r\nPrimaryMailServer=one\r\n[ADMIN"));
  const auto queues = [this] {
    return Stored("SQL:A", "Queues") + " " + Stored("SQL:B", "Queues") + " " + Stored("SQL:H,1", "Queues");
  };
  const std::string count = "lblQueueServersCount";
  EXPECT_EQ(Lines("lstQueueApplServers") + " " + SelectedServers() + " " + Text(count), "A|B|H,1 A 1 of 3");
  EXPECT_FALSE(IsModified());
  Find("lstQueueApplServers").setFocus();  // by keyboard alone
  Press(Qt::Key_B);                        // leads there and selects nothing
  EXPECT_EQ(SelectedServers(), "A");
  Press("Home Down Space Down Space");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q1", "queuebydefaultservers"), "A,B,H,1");
  EXPECT_EQ(queues() + " " + Text(count), "Q1,Q2 Q2,Q1 Q1 3 of 3");
  Choose("cmbQueues", 1);  // nothing goes with it, and it leaves the instances
  EXPECT_EQ(SelectedServers(), "");
  EXPECT_EQ(Text(count), "0 of 3");
  Choose("cmbQueues", 0);
  EXPECT_EQ(SelectedServers(), "A|B|H,1");
  ClickLine("lstQueueApplServers", 0);
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q1", "queuebydefaultservers") + " " + queues(), "B,H,1 , ,Q1 Q1");
  Click("optQueueNone");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q1", "queuebydefault queuebydefaultservers") + " " + queues(), "none| , , ");
  EXPECT_EQ(OnOf("lstQueueApplServers lstQueueFilter btnAddQueueFilter"), "");
}

TEST_F(QueuesPageTest, OffersNoDeletedInstanceAndChangesNoQueueThatCannotBeWritten) {
  const std::pair<std::string, const char*> queues[] = {
      {kDailyQueue, "B"},
      {"<queue", ""},  // cannot be used: nothing is offered
      {"<?xml version=\"1.0\" encoding=\"HZ\"?><queue queuebydefaultservers=\"A\"/>", "B"}};
  for (const auto& [xml, offered] : queues) {
    SCOPED_TRACE(xml);
    WriteQueue("Q", xml);
    Open();
    ClickTab(1);
    Delete("btnDeleteSqlSettings", "settings for server A");
    ClickTab(2);
    EXPECT_EQ(Lines("lstQueueApplServers"), offered);
    SaveSuccessfully();
    EXPECT_EQ(QueueFile("Q").substr(0, 14), xml.substr(0, 14));
  }
}

TEST_F(QueuesPageTest, ScrollsToTheChosenOfManyInstances) {
  std::string ini = kMailOne;
  for (int number = 1; number <= 60; ++number)
    ini += "[SQL:" + std::to_string(number) + "]\r\nPrimaryMailServer=one\r\n";
  for (const std::string queue : {"30", "50"})
    WriteQueue(queue, Replaced(kDailyQueue, "none\" queuebydefaultservers=\"",
                               "all\" queuebydefaultservers=\"" + queue + ",57,60"));
  WriteQueue("none", kDailyQueue);
  Open(ini);
  const auto& list = Find<QListWidget>("lstQueueApplServers");
  for (const auto& [index, first, count] :
       {std::tuple(0, "30", "3 of 60"), {1, "50", "3 of 60"}, {2, "1", "0 of 60"}}) {
    if (index > 0) Choose("cmbQueues", index);
    const auto* entry = list.findItems(QString::fromLatin1(first), Qt::MatchExactly).front();
    EXPECT_TRUE(list.viewport()->rect().contains(list.visualItemRect(entry))) << first;
    EXPECT_EQ(Text("lblQueueServersCount"), count);
    EXPECT_TRUE(list.accessibleDescription().startsWith(QString::fromLatin1(count)));
  }
}

TEST_F(QueuesPageTest, EditsTheFilter) {
  WriteQueue("Q", kDailyQueue);
  WriteQueue("R", kDailyQueue);
  Open();
  const std::string edits = "btnEditQueueFilter btnDeleteQueueFilter";
  Click("optQueueFilter");
  EXPECT_EQ(OnOf(edits), "");
  ClickLine("lstQueueApplServers", 0);
  InDialog([](const DialogUser& user) {
    EXPECT_EQ(user.Entries("cmbField"), Words("Recipients CopyRecipients BlindCopyRecipients Subject Message "
                                              "CallingSQL Query"));
    EXPECT_FALSE(user.IsOn("btnOK"));
    user.Press("Down Down Down Down Tab");
    EXPECT_TRUE(user.IsOn("btnOK"));
    user.Type("^Invoice");
    user.Click("btnOK");
  });
  Click("btnAddQueueFilter");
  Find("lstQueueFilter").setFocus();
  WillFill("Sub", "a=b");  // a field of its own, as typed
  Press("Ins");
  WillFill("x", "y", Qt::Key_Escape);
  Press("Ins");
  ClickLine("lstQueueFilter", 1);
  EXPECT_EQ(OnOf(edits), edits);
  InDialog([](const DialogUser& user) {
    EXPECT_EQ(user.Text("cmbField txtValue"), "Sub|a=b");
    user.Click("btnCancel");
  });
  Press(Qt::Key_Return);
  EXPECT_EQ(Lines("lstQueueFilter"), "Subject=^Invoice|Sub=a=b");
  WillFill("Query", "1###2");
  ClickLine("lstQueueFilter", 1, true);
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q", "queuebydefaultfilter"), "Subject=^Invoice###Query=1###2");
  Choose("cmbQueues", 1);
  EXPECT_EQ(Lines("lstQueueFilter"), "");
  Choose("cmbQueues", 0);
  EXPECT_EQ(Lines("lstQueueFilter"), "Subject=^Invoice|Query=1|2");
  for (const auto& [answer, left] : {std::pair(Answer::No, "Subject=^Invoice|Query=1|2"),
                                     {Answer::Yes, "Query=1|2"},
                                     {Answer::Yes, "2"},
                                     {Answer::Yes, ""}}) {
    ClickLine("lstQueueFilter", 0);
    messages.WillShow(
        Question("Confirm deletion", "Are you sure you want to delete this filter?", MessageButtons::YesNo),
        answer);
    answer == Answer::No ? Click("btnDeleteQueueFilter") : Press("Del");
    EXPECT_EQ(Lines("lstQueueFilter"), left);
  }
  EXPECT_EQ(OnOf(edits), "");
  Save(Invalid({"QUEUE:Q\r\n- You chose to queue by default based on a filter but the filter is empty"}));
}

TEST_F(QueuesPageTest, AddsAndDeletesAndCannotLeaveAnInvalidQueue) {
  WriteQueue("NIGHTLY", kDailyQueue);
  WriteQueue("defaultQUEUE", ReadFile(SystemFiles(), PROJECT_FOLDER
                                      "/install/QUEUEDefinitions/defaultQUEUE.xml"));  // as it ships
  Open();
  const Message characters =
      Warning("Duplicate Name", "The following characters are not allowed :;*?\"<>|'`,{}[]");
  for (const auto& [name, box] :
       {std::pair("a,b", characters),
        {"[x]", characters},
        {"Nightly", Warning("Duplicate Name", "A queue with this name already exists")},
        {"DEFAULTqueue", Warning("Invalid Name", "defaultQUEUE is the template of new queues.")},
        {"a.XML.b", Warning("Invalid Name", "A name cannot hold \".xml\": it would come back without it.")},
        {"\u4E2D", Warning("Invalid Name",
                           "The name holds a character that Pellorin.ini cannot hold (it is outside code "
                           "page 1252).")}})
    AddQueue(name, box);
  AddQueue("");
  EXPECT_EQ(Entries("cmbQueues"), Names{"NIGHTLY"});
  AddQueue(" Early-1.0 ");
  EXPECT_EQ(Entries("cmbQueues"), (Names{" Early-1.0 ", "NIGHTLY"}));
  EXPECT_EQ(Text("cmbQueues txtQueueTitle txtEvery"), " Early-1.0 | Early-1.0 |1");
  Press("Del");  // the number is selected
  messages.WillShow(Faulty("queue  Early-1.0 ", "The field Every must be a number"));
  Choose("cmbQueues", 1);
  messages.WillShow(Faulty("queue  Early-1.0 ", "The field Every must be a number"));
  Click("btnAddQueue");
  EXPECT_EQ(Text("cmbQueues txtQueueTitle txtEvery"), " Early-1.0 | Early-1.0 |");
  Replace("txtEvery", "2");
  SaveSuccessfully();
  EXPECT_EQ(QueueFile(" Early-1.0 ").find("  The settings of a mail queue."),
            QueueFile("defaultQUEUE").find("  The settings of a mail queue."));
  EXPECT_EQ(Stored(" Early-1.0 ", "every span endtime"), "2|Hour(s)|11:59:59 PM");
  Delete("btnDeleteQueue", "queue  Early-1.0 ", Answer::No);
  Delete("btnDeleteQueue", "queue  Early-1.0 ");
  EXPECT_EQ(Text("cmbQueues txtQueueTitle"), "NIGHTLY|t");
  Delete("btnDeleteQueue", "queue NIGHTLY");
  EXPECT_EQ(
      OnOf("cmbQueues btnAddQueue btnDeleteQueue txtEvery optDaily lstQueueApplServers lblScheduleSummary"),
      "btnAddQueue");
  EXPECT_EQ(Text("txtQueueTitle txtEvery lblScheduleSummary lblNextRuns"), "|||");
  AddQueue("NIGHTLY");  // a deleted one does not block its name
  SaveSuccessfully();
  EXPECT_EQ(Stored("NIGHTLY", "title"), "NIGHTLY");
  EXPECT_FALSE(HasQueue(" Early-1.0 "));
}

TEST_F(QueuesPageTest, AnUnusableFileIsNamedAndOnlyEverDeleted) {
  const std::string broken = "<queue title=\"x>";
  WriteQueue("Q1", broken);
  WriteQueue("R", kDailyQueue);
  Open();
  EXPECT_EQ(Text("lblQueueProblem")
                .find("The definition of this queue cannot be used:\r\n" + QueuePath("Q1") +
                      "\r\nIt is not well-formed XML: line 1"),
            0U);
  EXPECT_EQ(OnOf("cmbQueues btnAddQueue btnDeleteQueue btnTestQueue txtQueueTitle optDaily optQueueAll "
                 "txtStartDate lstQueueFilter"),
            "cmbQueues btnAddQueue btnDeleteQueue");
  EXPECT_FALSE(IsModified());
  Choose("cmbQueues", 1);
  EXPECT_EQ(Text("txtQueueTitle txtStartDate"), "t|11/22/2026");
  EXPECT_TRUE(Find("lblScheduleSummary").isVisible() && !Find("lblQueueProblem").isVisible());
  Click("optQueueFilter optQueueAll");
  EXPECT_EQ(OnOf("lstQueueApplServers lstQueueFilter btnAddQueueFilter"), "lstQueueApplServers");
  ClickLine("lstQueueApplServers", 0);
  Choose("cmbQueues", 0);
  EXPECT_EQ(Text("txtQueueTitle txtEvery"), "|");
  EXPECT_EQ(Lines("lstQueueApplServers"), "");
  SaveSuccessfully();
  EXPECT_EQ(QueueFile("Q1"), broken);
  Delete("btnDeleteQueue", "queue Q1");  // which takes it from the instances
  SaveSuccessfully();
  EXPECT_EQ(Stored("SQL:A", "Queues"), ",Q2,R");
  EXPECT_EQ(Stored("SQL:B", "Queues"), "Q2");
  EXPECT_FALSE(HasQueue("Q1"));
}

// Whatever the window kept as text would lead from one of these to the other.
TEST_F(QueuesPageTest, AFileWhoseNameIsNotTextIsShownAndDeletedAsItself) {
  const std::string first = "\xDC-", second = "\xE4-";
  for (const std::string& name : {first, second}) WriteQueue(name, kDailyQueue);
  WriteQueue("\\xE4-",
             Replaced(kDailyQueue, "none\" queuebydefaultservers=\"", "all\" queuebydefaultservers=\"B"));
  Open();
  EXPECT_EQ(Entries("cmbQueues"), (Names{"\\xE4-", "\\xDC-", "\\xE4-"}));  // the first one is usable
  const auto& tabs = Find<QTabWidget>("tabMain");
  EXPECT_FALSE(tabs.tabIcon(2).isNull());
  EXPECT_EQ(tabs.tabToolTip(2).toStdString(),
            "Configure Queues\r\nThese queues cannot be used:\r\n\\xDC-\r\n\\xE4-");
  Choose("cmbQueues", 2);
  Delete("btnDeleteQueue", "queue \\xE4-");
  SaveSuccessfully();
  EXPECT_TRUE(HasQueue(first) && !HasQueue(second) && HasQueue("\\xE4-"));
  EXPECT_EQ(Stored("SQL:B", "Queues"), "Q2,\\xE4-");
  Choose("cmbQueues", 1);
  Delete("btnDeleteQueue", "queue \\xDC-");
  EXPECT_TRUE(tabs.tabIcon(2).isNull());
}

TEST_F(QueuesPageTest, AddsNothingWithoutTheTemplate) {
  Open();
  std::filesystem::remove(QueuePath("defaultQUEUE"));
  messages.WillAsk("New Queue", "Please enter the name of the new queue", "Q");
  messages.WillShowSome();
  Click("btnAddQueue");
  EXPECT_NE(messages.Last().text.find("Queue Q could not be added"), std::string::npos)
      << messages.Last().text;
  EXPECT_NE(messages.Last().text.find(QueuePath("defaultQUEUE")), std::string::npos) << messages.Last().text;
  EXPECT_TRUE(Entries("cmbQueues").empty() && !IsModified());
}

TEST_F(QueuesPageTest, NamesAKeyInAnotherLetterCaseAndFillsTheRest) {
  WriteQueue("Q", Replaced(kDailyQueue, " every=", " Every="));
  const std::string advice = " holds it in another letter case. Please correct its spelling in the file.\r\n";
  messages.WillShow(Critical("The setting \"every\" cannot be changed: queue Q" + advice + QueuePath("Q") +
                             "\r\nThe setting \"Queues\" cannot be changed: section SQL:B" + advice +
                             IniPath() +
                             "\r\n\r\nError Number: 457\r\nError Source: PellorinConfig.exe, Collection"));
  Open(Replaced(kInstances, "Queues=Q2", "queues=Q2"));
  EXPECT_EQ(Text("txtEvery txtQueueTitle"), "1|t");
}

}  // namespace
}  // namespace pellorin::test
