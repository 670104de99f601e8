// Tags: reading one, the tag and caption of every control of the window, and switching controls by them.
#include <QLineEdit>
#include <set>

#include "tests/ui/WindowFixture.h"
#include "ui/QTag.h"

namespace pellorin::test {
namespace {

TEST(QTag, ReadsEveryShapeOfATag) {
  const struct {
    const char* tag;
    Names on, off, members, sections;
  } cases[] = {
      {"LocalServer:RemoteServer@Mail", {"LocalServer"}, {"RemoteServer"}, {}, {"Mail"}},
      {":QueueFilter,QueueServers@Queue", {}, {"QueueFilter", "QueueServers"}, {}, {"Queue"}},
      {"Basic,NTLM@Mail", {"Basic", "NTLM"}, {}, {}, {"Mail"}},
      {"NativeMember@Sql", {}, {}, {"Native"}, {"Sql"}},
      {"On,InMember:OutMember,Off@Mail,Sql", {"On"}, {"Off"}, {"In", "Out"}, {"Mail", "Sql"}},
      {"@Admin", {}, {}, {}, {"Admin"}},
      {"Member@Mail", {}, {}, {""}, {"Mail"}},
      {"A,,B@Mail", {"A", "", "B"}, {}, {}, {"Mail"}},
      {"AMembers,member,Bmember@Mail", {"AMembers", "member", "Bmember"}, {}, {}, {"Mail"}},
      {" A@ Mail", {" A"}, {}, {}, {" Mail"}},
      {"A:B:C@Mail", {}, {}, {}, {"Mail"}},
      {"A@Mail@Sql", {}, {}, {}, {}},
      {"AlwaysOn", {}, {}, {}, {}},
      {"", {}, {}, {}, {}},
  };
  std::set<std::string> asked{"on", "MAIL", "mail", "native", "AMember", "NativeMember"};
  for (const auto& row : cases)
    for (const Names* names : {&row.on, &row.off, &row.members, &row.sections})
      asked.insert(names->begin(), names->end());
  for (const auto& row : cases) {
    SCOPED_TRACE(row.tag);
    const QTag tag(row.tag);
    EXPECT_EQ(tag.OnGroups(), row.on);
    EXPECT_EQ(tag.OffGroups(), row.off);
    for (const std::string& name : asked) {
      const auto holds = [&](const Names& names) { return std::ranges::find(names, name) != names.end(); };
      EXPECT_EQ(tag.IsOnGroup(name), holds(row.on)) << name;
      EXPECT_EQ(tag.IsOffGroup(name), holds(row.off)) << name;
      EXPECT_EQ(tag.IsInGroup(name), holds(row.members)) << name;
      EXPECT_EQ(tag.IsInSection(name), holds(row.sections)) << name;
    }
  }
}

class Tags : public WindowFixture {
  void SetUp() override { ASSERT_TRUE(Start(kUsual)); }
};

TEST_F(Tags, EveryControlHasItsNameTagAndCaption) {
  const std::pair<const char*, const char*> tags[] = {
      {"AlwaysOn@Main", "tabMain btnHelp btnExit frmMail frmSql frmQueues"},
      {"Control@Main", "btnSave btnCancel"},
      {"Section@Admin", "Label52"},
      {"@Admin", "txtSchedulerUsername txtSchedulerPassword Label45 lblSchedulerPassword"},
      {"AlwaysOn@Mail", "btnAddNewMailServer"},
      {"Section@Mail", "Label2 Label15 Label18"},
      {"@Mail",
       "cmbMailServer txtSenderEmail txtConnectionTimeout txtDefaultDomain btnTestMailServer "
       "btnDeleteMailSettings Label23 Label12 Label26 Label28 Frame3"},
      {"LocalServer:RemoteServer@Mail", "optLocalMailServer"},
      {"RemoteServer:LocalServer@Mail", "optRemoteMailServer"},
      {"LocalServerMember@Mail", "txtLocalPickupFolder Label16"},
      {"RemoteServerMember@Mail", "txtRemoteServerName txtRemoteServerPort Label17 Label19"},
      {":Basic,NTLM@Mail", "optAnonymous"},
      {"Basic:NTLM@Mail", "optBasic"},
      {"Basic,NTLM@Mail", "optNTLM"},
      {"BasicMember@Mail", "txtMailUsername txtMailPassword Label20 Label21"},
      {"NTLMMember@Mail", "txtMailDomain Label22"},
      {"AlwaysOn@Sql", "btnAddNewSqlServer"},
      {"Section@Sql", "Label1 Label3 Label4 Label9 Label30"},
      {"Native@Sql", "optSqlNative"},
      {":Native@Sql", "optTrusted"},
      {"NativeMember@Sql", "txtSqlUsername txtSqlPassword Label5 Label6"},
      {"@Sql",
       "cmbSQLServer cmbPrimaryMailServer cmbSecondaryMailServer txtTimeout cmbStylesheet txtLineWidth "
       "optHTML "
       "optText chkEncodeHTML chkEmailWhenEmpty txtRedirectAllEmailTo chkForceSetUser txtProhibitedTokens "
       "chkAnsiAttachment cmbExceptionMode btnConfigure lblConfiguredDB btnClearSecondaryServer "
       "btnRefreshSecondaryServer btnClearprimaryServer btnRefreshPrimaryServer btnClearStylesheet "
       "btnRefreshStylesheets btnTestSqlServer btnDeleteSqlSettings Frame1 Label7 Label8 Label11 Label13 "
       "Label14 "
       "Label24 Label25 Label27 Label29 Label48 Label49 Label50 lblSqlNotice"},
      {"AlwaysOn@Queue", "btnAddQueue"},
      {"Section@Queue", "Label31 Label32"},
      {"QueueFilter,QueueServers@Queue", "optQueueFilter"},
      {"QueueServers:QueueFilter@Queue", "optQueueAll"},
      {":QueueFilter,QueueServers@Queue", "optQueueNone"},
      {"QueueFilterMember@Queue", "lstQueueFilter btnAddQueueFilter btnEditQueueFilter btnDeleteQueueFilter"},
      {"QueueServersMember@Queue", "lstQueueApplServers"},
      {"EndDate@Queue", "optEndDate"},
      {":EndDate@Queue", "optNoEndDate"},
      {"EndDateMember@Queue", "txtEndDate"},
      {"Weekly@Queue", "optWeekly"},
      {":Weekly@Queue", "optDaily"},
      {"WeeklyMember@Queue", "chkMonday chkTuesday chkWednesday chkThursday chkFriday chkSaturday chkSunday"},
      {"OccursEvery:OccursOnce@Queue", "optOccursEvery"},
      {"OccursOnce:OccursEvery@Queue", "optOccursOnce"},
      {"OccursEveryMember@Queue", "txtOccursEvery cmbSpan txtStartTime txtEndTime"},
      {"OccursOnceMember@Queue", "txtOccursOnce"},
      {"@Queue",
       "cmbQueues txtQueueTitle txtStartDate txtEvery lblEverySpan btnTestQueue btnDeleteQueue Frame4 Frame5 "
       "Frame6 Frame7 frmOccurance Label33 Label41 Label42 Label43 Label44 Label46 Label47 "
       "lblScheduleSummary"}};
  for (const auto& [tag, names] : tags)
    for (const std::string& name : Words(names)) {
      EXPECT_EQ(window->findChildren<QWidget*>(QString::fromStdString(name)).size(), 1) << name;
      EXPECT_EQ(ControlTags::TagOf(Find(name)), tag) << name;
    }
  EXPECT_EQ(Texts("btnSave btnCancel btnExit btnHelp Label52 Label45 lblSchedulerPassword"),
            "&Save|&Cancel|&Exit|&Help|Scheduler Settings|Username|Password");
  EXPECT_EQ(Texts("Label2 btnDeleteMailSettings btnTestMailServer Label23 Label28 Label12 Label26 Label15"),
            "Mail Server|Delete|Test|Sender's Email|Default Domain|Timeout|(0 = unlimited)|Connection");
  EXPECT_EQ(Texts("optLocalMailServer Label16 optRemoteMailServer Label17 Label19 Label18"),
            "Local Mail Server|Pickup Folder|Remote Mail Server|Server Name|Server Port|Authentication");
  EXPECT_EQ(Texts("optAnonymous optBasic optNTLM Label20 Label21 Label22"),
            "Anonymous|Basic|NTLM|Username|Password|Domain");
  EXPECT_EQ(Texts("Label1 btnDeleteSqlSettings Label3 optTrusted optSqlNative Label5 Label6 Label27 Label24"),
            "SQL Server Instance|Delete|Database Connection|Use Trusted Connection|Use Sql Native Connection|"
            "Username|Password|Timeout|(0 = unlimited)");
  EXPECT_EQ(
      Texts("Label29 lblConfiguredDB btnConfigure Label4 Label7 btnClearprimaryServer Label8 Label9 Label11"),
      "Database|None|Configure|Mail Servers|Primary Server|Clear|Backup Server|Appearence|Default Format");
  EXPECT_EQ(Texts("optHTML optText chkEncodeHTML Label13 Label25 Label14 btnRefreshStylesheets Label30"),
            "HTML|Text|Encode HTML|Line Width|(0 = unlimited)|Stylesheet|Refresh|Other Settings");
  EXPECT_EQ(Texts("chkEmailWhenEmpty chkForceSetUser Label48 Label49 chkAnsiAttachment Label50"),
            "Email When Query Empty|Force Set User|Prohibited Tokens|Redirect All Email To|Ansi Attachment|"
            "Exception Mode");
  EXPECT_EQ(Texts("Label31 btnAddQueue btnDeleteQueue btnTestQueue Label33 optDaily optWeekly Label41"),
            "Queues|Add|Delete|Test|Default Subject Line|Daily|Weekly|Every");
  EXPECT_EQ(Texts("chkMonday chkTuesday chkWednesday chkThursday chkFriday chkSaturday chkSunday"),
            "Mon|Tue|Wed|Thu|Fri|Sat|Sun");
  EXPECT_EQ(Texts("optOccursOnce optOccursEvery Label42 Label43 Label44 optEndDate optNoEndDate"),
            "Occurs Once At|Occurs Every|Start At|End At|Start Date||No End Date");
  EXPECT_EQ(Texts("optQueueNone optQueueAll optQueueFilter Label46 Label47 btnEditQueueFilter"),
            "None|All|Filter|Applicable to servers|Filter|Edit");
  for (const auto& [frame, title] : {std::pair("Frame4", "Occurs"),
                                     {"Frame5", "Daily Frequency"},
                                     {"Frame6", "Duration"},
                                     {"Frame7", "Queue By Default"}})
    EXPECT_EQ(Find(frame).property("title").toString().toStdString(), title);
  const auto& tabs = Find<QTabWidget>("tabMain");
  const char* captions[] = {"Mail Servers", "Sql Servers", "Queues"};
  const char* pages[] = {"frmMail", "frmSql", "frmQueues"};
  ASSERT_EQ(tabs.count(), 3);
  for (int index = 0; index < 3; ++index) {
    EXPECT_EQ(tabs.tabText(index).toStdString(), captions[index]);
    EXPECT_EQ(tabs.tabToolTip(index).toStdString(), std::string("Configure ") + captions[index]);
    EXPECT_EQ(tabs.widget(index)->objectName().toStdString(), pages[index]);
  }
  for (const char* name : {"txtMailPassword", "txtSchedulerPassword", "txtSqlPassword"})
    EXPECT_EQ(Find<QLineEdit>(name).echoMode(), QLineEdit::Password);
}

TEST_F(Tags, ToggleSectionSwitchesOneKindWithItsColours) {
  const std::string mail =
      "cmbMailServer txtSenderEmail Label2 Label20 btnTestMailServer Frame3 txtLocalPickupFolder "
      "txtMailDomain optNTLM";
  const std::string others = "btnAddNewMailServer frmMail cmbSQLServer txtSchedulerUsername btnSave";
  const ControlTags tags(*window);
  for (const bool on : {false, true}) {
    tags.ToggleSection("Mail", on);
    EXPECT_EQ(OnOf(mail), on ? mail : "");
    EXPECT_EQ(OnOf(others), others);
    for (const char* field : {"cmbMailServer", "txtSenderEmail", "txtMailDomain"}) {
      const QPalette& colours = Find(field).palette();
      const QPalette& look = window->palette();
      EXPECT_EQ(colours.color(QPalette::Active, QPalette::Base),
                look.color(on ? QPalette::Base : QPalette::Button));
      EXPECT_EQ(colours.color(QPalette::Active, QPalette::Text),
                on ? look.color(QPalette::ButtonText) : look.color(QPalette::Disabled, QPalette::Text));
    }
  }
  tags.ToggleSection("mail", false);
  EXPECT_EQ(OnOf(mail), mail);
}

}  // namespace
}  // namespace pellorin::test
