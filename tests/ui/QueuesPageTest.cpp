// The page of the queues, driven by keys and clicks over a real service folder. What counts is what the saved
// files hold.
#include <sys/stat.h>

#include <QDate>
#include <QListWidget>

#include "config/DateTimeText.h"
#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

const std::string kScheduler =
    "[ADMIN:Pellorin]\r\nSchedulerUsername=sched\r\nSchedulerPassword=<\\_\r\n";  // the password is "Z2"
const std::string kInstances = kMailOne +
                               "[SQL:A]\r\nDefaultFormat=Text\r\nPrimaryMailServer=one\r\nQueues=Q1,Q2\r\n"
                               "[SQL:B]\r\nDefaultFormat=Text\r\nPrimaryMailServer=one\r\nQueues=Q2\r\n" +
                               kScheduler;

const std::string kDailyQueue =
    "<queue title=\"t\" frequency=\"daily\" every=\"1\" occurstype=\"once\" occursonce=\"23:05\" "
    "occursevery=\"1\" "
    "span=\"Hour(s)\" starttime=\"12:00 AM\" startdate=\"11/22/2026\" endtime=\"11:59:59 PM\" "
    "enddate=\"11/22/2026\" hasenddate=\"0\" queuebydefault=\"none\" queuebydefaultservers=\"\"/>";

const Message kIncorrectOccurs = Critical("Incorrect 'Occurs' value. Possible values are Daily or Weekly.");
const std::string kDayBoxes = "chkMonday chkTuesday chkWednesday chkThursday chkFriday chkSaturday chkSunday";

class QueuesPageTest : public WindowFixture {
 protected:
  void WriteQueue(const std::string& name, const std::string& xml) {
    folder.Write("Service/QUEUEDefinitions/" + name + ".xml", xml);
  }
  std::string QueueFile(const std::string& name) {
    return folder.Read("Service/QUEUEDefinitions/" + name + ".xml");
  }
  std::string QueuePath(const std::string& name) { return program + "/QUEUEDefinitions/" + name + ".xml"; }
  bool HasQueue(const std::string& name) { return ::access(QueuePath(name).c_str(), F_OK) == 0; }
  void Open(const std::string& ini = kInstances) {
    ASSERT_TRUE(Start(ini));
    ClickTab(2);
  }
  std::string SelectedServers() const { return Lines("lstQueueApplServers", true); }
  void ClickLine(const std::string& list, int row, bool twice = false) const {
    const auto& box = Find<QListWidget>(list);
    const QPoint place = box.viewport()->mapTo(window.get(), box.visualItemRect(box.item(row)).center());
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, place);
    if (twice) QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, place);
  }
  void DeleteQueue(const std::string& name, Answer answer) {
    messages.WillShow(
        Question("Delete Section", "Do you want to delete queue " + name + "?", MessageButtons::YesNo),
        answer);
    Click("btnDeleteQueue");
  }
  // Types field, Tab, expression; then Enter, or Escape.
  void WillFill(const std::string& field, const std::string& value, Qt::Key end = Qt::Key_Return) {
    InDialog([=](QDialog& dialog) {
      const auto press = [&](auto key) { QTest::keyClick(dialog.windowHandle(), key); };
      QTest::keyClick(dialog.windowHandle(), Qt::Key_A, Qt::ControlModifier);
      for (const char key : field) press(key);
      press(Qt::Key_Tab);
      for (const char key : value) press(key);
      press(end);
    });
  }
};

TEST_F(QueuesPageTest, StoresTheDefaultsOfWhatAQueueLacks) {
  WriteQueue("Bare", "<queue/>");
  Open();
  const QDate day = QDate::currentDate();
  const std::string today = day.toString(QStringLiteral("M/d/yyyy")).toStdString();
  EXPECT_EQ(Texts("txtQueueTitle txtEvery txtOccursEvery cmbSpan"), "|1|1|");
  EXPECT_EQ(Checked("optDaily optWeekly optOccursOnce optOccursEvery optEndDate optNoEndDate optQueueNone "
                    "optQueueAll optQueueFilter " +
                    kDayBoxes),
            "optDaily optOccursOnce optNoEndDate optQueueNone");
  EXPECT_EQ(
      OnOf("chkMonday txtOccursOnce txtOccursEvery cmbSpan txtStartTime txtEndTime txtStartDate txtEndDate "
           "lstQueueApplServers lstQueueFilter btnAddQueueFilter"),
      "txtOccursOnce txtStartDate");
  EXPECT_EQ(Find("frmOccurance").property("title").toString().toStdString() + Text("lblEverySpan"),
            "DailyDay");
  SaveSuccessfully();
  if (QDate::currentDate() != day) GTEST_SKIP() << "a new day began";
  const std::string file = QueueFile("Bare");
  const std::size_t once = file.find("occursonce=\"") + 12;
  ASSERT_TRUE(IsDate(file.substr(once, 5), LocaleConventions())) << file;
  EXPECT_EQ(file.substr(0, once) + "now" + file.substr(once + 5),
            "<queue frequency=\"daily\" every=\"1\" occurstype=\"once\" occursonce=\"now\" occursevery=\"1\" "
            "span=\"\" "
            "starttime=\"12:00 AM\" startdate=\"" +
                today + "\" endtime=\"11:59:59 PM\" enddate=\"" + today +
                "\" hasenddate=\"0\" title=\"\" queuebydefault=\"none\" queuebydefaultservers=\"\"/>\n");
}

TEST_F(QueuesPageTest, ShowsWhatIsStoredAndStoresNoMore) {
  struct Row {
    std::string from, to, checked, picture;
  };
  const std::string all = "optDaily optWeekly " + kDayBoxes +
                          " optOccursOnce optOccursEvery optEndDate optNoEndDate optQueueNone "
                          "optQueueAll optQueueFilter";
  const Row rows[] = {
      {"daily\"", "weekly\" days=\"MONDAY,friday\"",
       "optWeekly chkMonday chkFriday optOccursOnce optNoEndDate optQueueNone",
       "Every week on Mon, Fri at 11:05 PM, from 11/22/2026"},
      {"once\"", "every\"", "optDaily optOccursEvery optNoEndDate optQueueNone",
       "Every day, every hour from 12:00 AM to 11:59:59 PM, from 11/22/2026"},
      {"hasenddate=\"0", "hasenddate=\"1", "optDaily optOccursOnce optEndDate optQueueNone",
       "Every day at 11:05 PM, from 11/22/2026 until 11/22/2026"},
      {"none\" queuebydefaultservers=\"", "ALL\" queuebydefaultservers=\"B",
       "optDaily optOccursOnce optNoEndDate optQueueAll", "Every day at 11:05 PM, from 11/22/2026"},
      {"23:05", "at noon", "optDaily optOccursOnce optNoEndDate optQueueNone", "Missing: the time of day"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.to);
    const std::string stored = Replaced(kDailyQueue, row.from, row.to);
    WriteQueue("Q", stored);
    Open();
    EXPECT_EQ(Checked(all), row.checked);
    EXPECT_EQ(Text("lblScheduleSummary"), row.picture);
    if (row.to == "at noon") {
      EXPECT_EQ(Text("txtOccursOnce"), "");
      messages.WillShow(Warning("Validation Errors",
                                "Please correct the following errors: \r\n\r\nQUEUE:Q\r\n"
                                "- Occurs once value should be a date\r\n\r\n"));
      Click("btnSave");
    } else if (row.to.starts_with("ALL")) {
      EXPECT_EQ(SelectedServers(), "B");
      SaveSuccessfully();
      EXPECT_EQ(Stored("Q", "queuebydefault"), "all");
      EXPECT_EQ(Stored("SQL:B", "Queues"), "Q2,Q");
      WriteIni(kInstances);
    } else {
      EXPECT_FALSE(IsModified());
    }
  }
}

TEST_F(QueuesPageTest, RefusesAnUnknownFrequencyAndShowsTheRest) {
  WriteQueue("Q", Replaced(kDailyQueue, "daily", "Daily"));
  messages.WillShow(kIncorrectOccurs);
  Open();
  EXPECT_EQ(Checked("optDaily optWeekly optOccursOnce"), "optOccursOnce");
  EXPECT_FALSE(IsOn("chkMonday"));
  EXPECT_EQ(Text("txtQueueTitle"), "t");
  EXPECT_FALSE(IsModified());
  Click("optWeekly");
  EXPECT_TRUE(IsOn("chkMonday"));
  Click("chkSunday");
  Click("chkTuesday");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q", "frequency") + " " + Stored("Q", "days"), "weekly tuesday,sunday");
}

TEST_F(QueuesPageTest, EveryControlStoresItsKey) {
  WriteQueue("Q", Replaced(kDailyQueue, "daily\"", "weekly\" days=\"MONDAY,friday\""));
  Open();
  Click("chkSunday");
  Replace("txtQueueTitle", "New title");
  Replace("txtEvery", "3");
  Click("optOccursEvery");
  Replace("txtOccursEvery", "20");
  Choose("cmbSpan", 1);
  EXPECT_EQ(Text("lblScheduleSummary"),
            "Every 3 weeks on Mon, Fri, Sun, every 20 minutes from 12:00 AM to 11:59:59 PM, from 11/22/2026");
  Click("txtStartTime");
  Press(Qt::Key_Home);
  Press(Qt::Key_Up);  // the hour
  Click("optEndDate");
  Click("txtEndDate");
  Press(Qt::Key_Home);
  Press(Qt::Key_Up);  // the month
  EXPECT_EQ(
      Text("lblScheduleSummary"),
      "Every 3 weeks on Mon, Fri, Sun, every 20 minutes from 1:00 AM to 11:59:59 PM, from 11/22/2026 until "
      "12/22/2026");
  SaveSuccessfully();
  std::string shown;
  for (const char* key : {"title", "frequency", "every", "days", "occurstype", "occursonce", "occursevery",
                          "span", "starttime", "endtime", "startdate", "enddate", "hasenddate"})
    shown += Stored("Q", key) + "|";
  EXPECT_EQ(shown,
            "New title|weekly|3|monday,friday,sunday|every|23:05|20|Minute(s)|1:00 AM|11:59:59 PM|11/22/2026|"
            "12/22/2026|1|");
  Click("optNoEndDate");
  Click("optDaily");
  Click("optOccursOnce");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q", "hasenddate") + Stored("Q", "enddate") + Stored("Q", "frequency") +
                Stored("Q", "occurstype"),
            "012/22/2026dailyonce");
  EXPECT_EQ(OnOf("chkMonday txtOccursOnce txtOccursEvery txtEndDate"), "txtOccursOnce");
}

TEST_F(QueuesPageTest, KeepsTheQueuesOfEachInstance) {
  WriteQueue("Q1",
             Replaced(kDailyQueue, "none\" queuebydefaultservers=\"", "all\" queuebydefaultservers=\"A"));
  WriteQueue("Q2", kDailyQueue);
  Open(Replaced(kInstances, "[ADMIN", "[SQL:H,1]\r\nPrimaryMailServer=one\r\n[ADMIN"));
  EXPECT_EQ(Lines("lstQueueApplServers") + " " + SelectedServers(), "A|B|H,1 A");
  EXPECT_FALSE(IsModified());
  Find("lstQueueApplServers").setFocus();  // by keyboard alone
  Press(Qt::Key_B);                        // leads there and selects nothing
  EXPECT_EQ(SelectedServers(), "A");
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Down, Qt::Key_Space, Qt::Key_Down, Qt::Key_Space})
    Press(key);
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q1", "queuebydefaultservers"), "A,B,H,1");
  EXPECT_EQ(Stored("SQL:A", "Queues") + " " + Stored("SQL:B", "Queues") + " " + Stored("SQL:H,1", "Queues"),
            "Q1,Q2 Q2,Q1 Q1");
  Choose("cmbQueues", 1);  // nothing goes with it
  EXPECT_EQ(SelectedServers(), "");
  Choose("cmbQueues", 0);
  EXPECT_EQ(SelectedServers(), "A|B|H,1");
  ClickLine("lstQueueApplServers", 0);
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q1", "queuebydefaultservers") + " " + Stored("SQL:A", "Queues"), "B,H,1 ,");
  Click("optQueueNone");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q1", "queuebydefault") + Stored("Q1", "queuebydefaultservers"), "none");
  EXPECT_EQ(Stored("SQL:B", "Queues") + " " + Stored("SQL:H,1", "Queues"), ", ");
}

TEST_F(QueuesPageTest, OffersTheControlsOfEachWayOfQueueing) {
  WriteQueue("Q", kDailyQueue);
  Open();
  const std::string filter = "btnAddQueueFilter btnEditQueueFilter btnDeleteQueueFilter lstQueueFilter";
  for (const auto& [option, on] :
       {std::pair("optQueueFilter", "lstQueueApplServers btnAddQueueFilter lstQueueFilter"),
        {"optQueueAll", "lstQueueApplServers"},
        {"optQueueNone", ""}}) {
    Click(option);
    EXPECT_EQ(OnOf("lstQueueApplServers " + filter), on);
  }
}

TEST_F(QueuesPageTest, EditsTheFilter) {
  WriteQueue("Q", kDailyQueue);
  WriteQueue("R", kDailyQueue);
  Open();
  Click("optQueueFilter");
  ClickLine("lstQueueApplServers", 0);
  InDialog([](QDialog& dialog) {
    EXPECT_EQ(dialog.objectName().toStdString() + dialog.windowTitle().toStdString(), "frmRegExFilter");
    auto& fields = *dialog.findChild<QComboBox*>(QStringLiteral("cmbField"));
    QStringList items;
    for (int index = 0; index < fields.count(); ++index) items += fields.itemText(index);
    EXPECT_EQ(items.join(QLatin1Char(',')).toStdString(),
              "Recipients,CopyRecipients,BlindCopyRecipients,Subject,Message,CallingSQL,Query");
    auto& ok = *dialog.findChild<QAbstractButton*>(QStringLiteral("btnOK"));
    EXPECT_FALSE(ok.isEnabled());
    for (int step = 0; step < 4; ++step) QTest::keyClick(dialog.windowHandle(), Qt::Key_Down);
    EXPECT_TRUE(ok.isEnabled());
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
    for (const char key : std::string("^Invoice")) QTest::keyClick(dialog.windowHandle(), key);
    QTest::mouseClick(&ok, Qt::LeftButton);
  });
  Click("btnAddQueueFilter");
  Find("lstQueueFilter").setFocus();
  WillFill("Sub", "a=b");  // a field of its own, as typed
  Press(Qt::Key_Insert);
  WillFill("x", "y", Qt::Key_Escape);
  Press(Qt::Key_Insert);
  EXPECT_EQ(Lines("lstQueueFilter"), "Subject=^Invoice|Sub=a=b");
  ClickLine("lstQueueFilter", 1);
  EXPECT_EQ(OnOf("btnEditQueueFilter btnDeleteQueueFilter"), "btnEditQueueFilter btnDeleteQueueFilter");
  InDialog([](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QComboBox*>(QStringLiteral("cmbField"))->currentText().toStdString(), "Sub");
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("txtValue"))->text().toStdString(), "a=b");
    QTest::mouseClick(dialog.findChild<QWidget*>(QStringLiteral("btnCancel")), Qt::LeftButton);
  });
  Press(Qt::Key_Return);
  WillFill("Query", "1###2");
  ClickLine("lstQueueFilter", 1, true);
  EXPECT_EQ(Lines("lstQueueFilter"), "Subject=^Invoice|Query=1###2");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q", "queuebydefaultfilter"), "Subject=^Invoice###Query=1###2");
  Choose("cmbQueues", 1);
  EXPECT_EQ(Lines("lstQueueFilter"), "");
  Choose("cmbQueues", 0);
  EXPECT_EQ(Lines("lstQueueFilter"), "Subject=^Invoice|Query=1|2");
  EXPECT_EQ(OnOf("btnEditQueueFilter btnDeleteQueueFilter"), "");
  const Message question =
      Question("Confirm deletion", "Are you sure you want to delete this filter?", MessageButtons::YesNo);
  ClickLine("lstQueueFilter", 1);
  messages.WillShow(question, Answer::No);
  Click("btnDeleteQueueFilter");
  for (const char* left : {"Subject=^Invoice|2", "2", ""}) {
    ClickLine("lstQueueFilter", *left == 'S' ? 1 : 0);
    messages.WillShow(question, Answer::Yes);
    Press(Qt::Key_Delete);
    EXPECT_EQ(Lines("lstQueueFilter"), left);
    EXPECT_EQ(OnOf("btnEditQueueFilter btnDeleteQueueFilter"), "");
  }
  messages.WillShow(
      Warning("Validation Errors",
              "Please correct the following errors: \r\n\r\nQUEUE:Q\r\n- You chose to queue by default "
              "based on a filter but the filter is empty\r\n\r\n"));
  Click("btnSave");
}

TEST_F(QueuesPageTest, AddsARefusedNameNeverAndAGoodOneAtTheTop) {
  WriteQueue("NIGHTLY", kDailyQueue);
  WriteQueue("defaultQUEUE", ReadFile(SystemFiles(), TEST_DATA
                                      "/../../install/QUEUEDefinitions/defaultQUEUE.xml"));  // as it ships
  Open();
  const Message characters =
      Warning("Duplicate Name", "The following characters are not allowed :;*?\"<>|'`,{}[]");
  for (const auto& [name, box] :
       {std::pair<std::string, Message>{"a,b", characters},
        {"[x]", characters},
        {"Nightly", Warning("Duplicate Name", "A queue with this name already exists")},
        {"DEFAULTqueue", Warning("Invalid Name", "defaultQUEUE is the template of new queues.")},
        {"a.XML.b", Warning("Invalid Name", "A name cannot hold \".xml\": it would come back without it.")},
        {"\u4E2D", Warning("Invalid Name",
                           "The name holds a character that Pellorin.ini cannot hold (it is "
                           "outside code page 1252).")}}) {
    messages.WillAsk("New Queue", "Please enter the name of the new queue", name);
    messages.WillShow(box);
    Click("btnAddQueue");
  }
  AddQueue("");
  EXPECT_EQ(Entries("cmbQueues"), Names{"NIGHTLY"});
  AddQueue(" Early-1.0 ");
  EXPECT_EQ(Entries("cmbQueues"), (Names{" Early-1.0 ", "NIGHTLY"}));
  EXPECT_EQ(Texts("cmbQueues txtQueueTitle txtEvery"), " Early-1.0 | Early-1.0 |1");
  EXPECT_EQ(FocusName(), "txtEvery");
  SaveSuccessfully();
  EXPECT_EQ(QueueFile(" Early-1.0 ").find("  The settings of a mail queue."),
            QueueFile("defaultQUEUE").find("  The settings of a mail queue."));
  EXPECT_EQ(Stored(" Early-1.0 ", "span") + Stored(" Early-1.0 ", "endtime"), "Hour(s)11:59:59 PM");
  DeleteQueue(" Early-1.0 ", Answer::No);
  DeleteQueue(" Early-1.0 ", Answer::Yes);
  EXPECT_EQ(Texts("cmbQueues txtQueueTitle"), "NIGHTLY|t");
  DeleteQueue("NIGHTLY", Answer::Yes);
  EXPECT_EQ(
      OnOf("cmbQueues btnAddQueue btnDeleteQueue txtEvery optDaily lstQueueApplServers lblScheduleSummary"),
      "btnAddQueue");
  EXPECT_EQ(Texts("txtQueueTitle txtEvery lblScheduleSummary"), "||");
  AddQueue("NIGHTLY");  // a deleted one does not block its name
  SaveSuccessfully();
  EXPECT_EQ(Stored("NIGHTLY", "title"), "NIGHTLY");
  EXPECT_FALSE(HasQueue(" Early-1.0 "));
}

TEST_F(QueuesPageTest, DeletingAQueueTakesItFromTheInstances) {
  WriteQueue("q1", "<not closed");
  Open();
  DeleteQueue("q1", Answer::Yes);
  SaveSuccessfully();
  EXPECT_EQ(Stored("SQL:A", "Queues") + " " + Stored("SQL:B", "Queues"), ",Q2 Q2");
  EXPECT_FALSE(HasQueue("q1"));
}

TEST_F(QueuesPageTest, AnInvalidQueueCannotBeLeft) {
  WriteQueue("Q", Replaced(kDailyQueue, "hasenddate=\"0", "hasenddate=\"1"));
  WriteQueue("R", kDailyQueue);
  Open();
  Choose("cmbQueues", 1);  // an end date equal to the start date is valid
  Choose("cmbQueues", 0);
  Click("txtEndDate");
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Down}) Press(key);  // 10/22/2026
  EXPECT_EQ(Text("lblScheduleSummary"), "The end date lies before the start date.");
  const Message refusal = Warning(
      "Validation Errors",
      "Settings for queue Q need to be corrected: \r\n- The End Date occurs before the Start Date\r\n");
  messages.WillShow(refusal);
  Choose("cmbQueues", 1);
  EXPECT_EQ(Texts("cmbQueues txtEndDate"), "Q|10/22/2026");
  messages.WillShow(refusal);
  Click("btnAddQueue");
  Find("txtEndDate").setFocus();
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Up, Qt::Key_Up}) Press(key);
  Choose("cmbQueues", 1);
  EXPECT_EQ(Text("cmbQueues"), "R");
  SaveSuccessfully();
  EXPECT_EQ(Stored("Q", "enddate") + Stored("R", "enddate"), "12/22/202611/22/2026");
}

TEST_F(QueuesPageTest, KeepsWhatAHandMadeFileHolds) {
  const std::string latin =
      "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>\n<!-- f\xFCr sp\xE4ter -->\n<settings>\n"
      "  <other a=\"1\"/>\n  ";
  WriteQueue("Q", latin + kDailyQueue + "\n</settings>\n");
  Open();
  Replace("txtEvery", "5");
  SaveSuccessfully();
  EXPECT_EQ(QueueFile("Q"),
            latin + Replaced(Replaced(kDailyQueue, "every=\"1\"", "every=\"5\""), "/>", " a=\"1\"/>") +
                "\n</settings>\n");
}

TEST_F(QueuesPageTest, AnUnusableFileIsNamedAndOnlyEverDeleted) {
  const std::string broken = "<queue title=\"x>";
  WriteQueue("Broken", broken);
  WriteQueue("Q", kDailyQueue);
  Open();
  EXPECT_EQ(Text("lblQueueProblem")
                .find("The definition of this queue cannot be used:\r\n" + QueuePath("Broken") +
                      "\r\nIt is no well-formed XML: line 1"),
            0U);
  EXPECT_EQ(
      OnOf(
          "cmbQueues btnAddQueue btnDeleteQueue btnTestQueue txtQueueTitle optDaily optQueueAll txtStartDate "
          "lstQueueFilter"),
      "cmbQueues btnAddQueue btnDeleteQueue");
  EXPECT_FALSE(IsModified());
  Choose("cmbQueues", 1);
  EXPECT_EQ(Texts("txtQueueTitle txtStartDate"), "t|11/22/2026");
  EXPECT_FALSE(Find("lblQueueProblem").isVisible());
  EXPECT_TRUE(Find("lblScheduleSummary").isVisible());
  Click("optQueueAll");
  ClickLine("lstQueueApplServers", 0);
  Choose("cmbQueues", 0);
  EXPECT_EQ(Texts("txtQueueTitle txtEvery") + Lines("lstQueueApplServers"), "|");
  SaveSuccessfully();
  EXPECT_EQ(QueueFile("Broken"), broken);
}

TEST_F(QueuesPageTest, ReportsWhatCannotBeWritten) {
  Open();
  AddQueue("a/b");
  Replace("txtSchedulerUsername", "other");
  messages.WillShowSome();
  Click("btnSave");
  EXPECT_EQ(messages.Last().text,
            "Could not save section a/b\r\nIts file would not lie in the folder of the queues. "
            "Please delete this queue and add it under another name.\r\n" +
                QueuePath("a/b") +
                "\r\n\r\nSaved: nothing\r\nNot saved: ADMIN:Pellorin, a/b\r\n\r\nError Number: "
                "50111\r\nError Source: PellorinConfig.exe, Section, Save");
  EXPECT_TRUE(IsModified());
  DeleteQueue("a/b", Answer::Yes);
  SaveSuccessfully();
  EXPECT_EQ(Stored("ADMIN:Pellorin", "SchedulerUsername"), "other");

  AddQueue("Q");
  const std::string definitions = program + "/QUEUEDefinitions";
  ASSERT_EQ(::rename(definitions.c_str(), (program + "/away").c_str()), 0);
  messages.WillShowSome();
  Click("btnSave");
  EXPECT_TRUE(messages.Last().text.starts_with("Could not save section Q\r\n")) << messages.Last().text;
  EXPECT_NE(messages.Last().text.find(QueuePath("Q")), std::string::npos) << messages.Last().text;
  EXPECT_TRUE(IsModified());
  ASSERT_EQ(::rename((program + "/away").c_str(), definitions.c_str()), 0);
  SaveSuccessfully();
  ASSERT_EQ(::chmod(QueuePath("Q").c_str(), 0444), 0);
  Replace("txtEvery", "7");
  messages.WillShowSome();
  Click("btnSave");
  EXPECT_NE(messages.Last().text.find(QueuePath("Q")), std::string::npos) << messages.Last().text;
  EXPECT_EQ(Stored("Q", "every"), "1");
  DeleteQueue("Q", Answer::Yes);
  SaveSuccessfully();

  ::unlink(QueuePath("defaultQUEUE").c_str());
  messages.WillAsk("New Queue", "Please enter the name of the new queue", "Q");
  messages.WillShowSome();
  Click("btnAddQueue");
  EXPECT_NE(messages.Last().text.find("Queue Q could not be added"), std::string::npos)
      << messages.Last().text;
  EXPECT_NE(messages.Last().text.find(QueuePath("defaultQUEUE")), std::string::npos) << messages.Last().text;
  EXPECT_TRUE(Entries("cmbQueues").empty());
  EXPECT_FALSE(IsModified());
}

TEST_F(QueuesPageTest, NamesAKeyInAnotherLetterCaseAndFillsTheRest) {
  WriteQueue("Q", Replaced(kDailyQueue, " every=", " Every="));
  const std::string advice = " holds it in another letter case. Please correct its spelling in the file.\r\n";
  messages.WillShowSome();
  Open(Replaced(kInstances, "Queues=Q2", "queues=Q2"));
  EXPECT_EQ(messages.Last().text,
            "The setting \"every\" cannot be changed: queue Q" + advice + QueuePath("Q") +
                "\r\nThe setting \"Queues\" cannot be changed: section SQL:B" + advice + IniPath() +
                "\r\n\r\nError Number: 457\r\nError Source: PellorinConfig.exe, Collection");
  EXPECT_EQ(Texts("txtEvery txtQueueTitle"), "1|t");
}

}  // namespace
}  // namespace pellorin::test
