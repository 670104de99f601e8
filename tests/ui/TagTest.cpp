// Tags: reading one, the tag and caption of every control of the window, and what the three operations do to
// real controls.
#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTabWidget>
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
      {":@Mail", {}, {}, {}, {"Mail"}},
      {"A,A:B,B@Mail,Mail", {"A", "A"}, {"B", "B"}, {}, {"Mail", "Mail"}},
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
  QTag tag;
  tag.InitMembers("A,BMember", "neither");
  EXPECT_TRUE(tag.IsInGroup("B") && tag.OnGroups().empty() && tag.OffGroups().empty());
}

class Tags : public WindowFixture {
 protected:
  void SetUp() override { ASSERT_TRUE(Start(kUsual)); }
  template <typename Control>
  Control& Make(const char* tag) {  // a control that joins a page by its tag alone
    auto* control = new Control(&Find("frmMail"));
    control->setProperty("tag", QString::fromUtf8(tag));
    return *control;
  }
  // Of a field: paper, or the window's own grey with muted text, as whenever it is disabled.
  void ExpectColours(const std::string& name, bool on) const {
    const QPalette look = window->palette();
    for (const auto group : {QPalette::Active, QPalette::Disabled}) {
      const bool isPaper = on && group == QPalette::Active;
      const QColor text =
          isPaper ? look.color(QPalette::ButtonText) : look.color(QPalette::Disabled, QPalette::Text);
      const QPalette& palette = Find(name).palette();
      for (const auto role : {QPalette::Base, QPalette::Button})
        EXPECT_EQ(palette.color(group, role), look.color(isPaper ? QPalette::Base : QPalette::Button))
            << name;
      for (const auto role : {QPalette::Text, QPalette::ButtonText})
        EXPECT_EQ(palette.color(group, role), text) << name;
    }
  }
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
      {"Section@Sql", "Label1"},
      {"@Sql", "cmbSQLServer Label29 lblConfiguredDB"},
      {"Section@Queue", "Label31"},
      {"@Queue", "cmbQueues"}};
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
  const auto& tabs = Find<QTabWidget>("tabMain");
  const char* captions[] = {"Mail Servers", "Sql Servers", "Queues"};
  const char* pages[] = {"frmMail", "frmSql", "frmQueues"};
  ASSERT_EQ(tabs.count(), 3);
  for (int index = 0; index < 3; ++index) {
    EXPECT_EQ(tabs.tabText(index).toStdString(), captions[index]);
    EXPECT_EQ(tabs.tabToolTip(index).toStdString(), std::string("Configure ") + captions[index]);
    EXPECT_EQ(tabs.widget(index)->objectName().toStdString(), pages[index]);
  }
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
    for (const char* field : {"cmbMailServer", "txtSenderEmail", "txtMailDomain"}) ExpectColours(field, on);
  }
  tags.ToggleSection("mail", false);
  EXPECT_EQ(OnOf(mail), mail);
  // A child keeps its own state while its frame is off.
  Find("Frame3").setEnabled(false);
  EXPECT_TRUE(!IsOn("optBasic") && Find("optBasic").isEnabledTo(&Find("Frame3")));
}

TEST_F(Tags, ToggleControlsSwitchesTheMembersOfItsGroups) {
  auto& both = Make<QLineEdit>("NTLMMember,BasicMember:LocalServerMember@Queue");
  both.setObjectName(QStringLiteral("both"));
  const std::string fields =
      "txtMailUsername Label21 txtMailDomain txtLocalPickupFolder txtRemoteServerName Label17 both";
  const struct {
    const char *tag, *on;  // after it and the ones before
  } cases[] = {{":Basic,NTLM@Mail", "txtRemoteServerName Label17"},
               {"Basic,NTLM@Mail", "txtMailUsername Label21 txtMailDomain txtRemoteServerName Label17 both"},
               {"Basic:NTLM@Mail", "txtMailUsername Label21 txtRemoteServerName Label17"},
               {"LocalServer:RemoteServer@Mail", "txtMailUsername Label21 txtLocalPickupFolder both"},
               {"RemoteServer:LocalServer@Sql", "txtMailUsername Label21 txtRemoteServerName Label17"},
               {"NTLM:NTLM@Mail", "txtMailUsername Label21 txtRemoteServerName Label17"},  // off after on
               {"NTLM:A:B@Mail", "txtMailUsername Label21 txtRemoteServerName Label17"},   // no groups
               {"NTLM", "txtMailUsername Label21 txtRemoteServerName Label17"}};           // no tag
  for (const auto& row : cases) {
    ControlTags(*window).ToggleControls(row.tag);
    EXPECT_EQ(OnOf(fields), row.on) << row.tag;
  }
  ExpectColours("txtMailDomain", false);
  ExpectColours("txtRemoteServerPort", true);
}

TEST_F(Tags, StartBrandNewEmptiesAndDisablesWithoutHandlers) {
  auto& list = Make<QListWidget>("@Mail");
  auto& tick = Make<QCheckBox>("@Mail");
  auto& kept = Make<QLineEdit>("AlwaysOn@Mail");
  list.addItems({QStringLiteral("a"), QStringLiteral("b")});
  list.setCurrentRow(1);
  tick.setChecked(true);
  kept.setText(QStringLiteral("kept"));
  int handled = 0;
  const auto count = [&handled] { ++handled; };
  QObject::connect(&list, &QListWidget::currentRowChanged, &list, count);
  QObject::connect(&Find<QComboBox>("cmbMailServer"), &QComboBox::currentIndexChanged, &tick, count);
  for (QLineEdit* text : Find("frmMail").findChildren<QLineEdit*>())
    QObject::connect(text, &QLineEdit::textChanged, &tick, count);
  for (QAbstractButton* button : Find("frmMail").findChildren<QAbstractButton*>())
    QObject::connect(button, &QAbstractButton::clicked, &tick, count);

  window->StartBrandNew("Mail");
  EXPECT_EQ(handled, 0);
  EXPECT_TRUE(list.count() == 0 && !list.isEnabled() && !tick.isChecked() && !tick.isEnabled());
  EXPECT_TRUE(kept.isEnabled() && kept.text() == QStringLiteral("kept"));
  const std::string texts = "txtSenderEmail txtRemoteServerName txtRemoteServerPort txtConnectionTimeout";
  EXPECT_EQ(Texts(texts), "|||");
  EXPECT_EQ(Find<QComboBox>("cmbMailServer").currentIndex(), -1);
  EXPECT_EQ(OnOf(texts + " cmbMailServer optBasic frmMail btnAddNewMailServer btnSave cmbSQLServer"),
            "frmMail btnAddNewMailServer btnSave cmbSQLServer");
  for (const QRadioButton* option : Find("frmMail").findChildren<QRadioButton*>())
    EXPECT_FALSE(option->isChecked()) << option->objectName().toStdString();
  ExpectColours("txtSenderEmail", true);
}

}  // namespace
}  // namespace pellorin::test
