// Tags: reading one, and switching controls by them.
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
      {":QueueFilter,QueueServers@Queue", {}, {"QueueFilter", "QueueServers"}, {}, {"Queue"}},
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
  std::set<std::string> asked{"on", "MAIL", "mail", "in", "AMember", "InMember"};
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

class Tags : public WindowFixture {};

TEST_F(Tags, ColourFieldsThatAreOnLikePaperAndOthersLikeTheWindow) {
  ASSERT_TRUE(Start(kUsual));
  const QPalette& look = window->palette();
  for (const auto& [field, on] : {std::pair("cmbMailServer", true),
                                  {"txtSenderEmail", true},
                                  {"txtMailUsername", false},
                                  {"txtSqlPassword", false}}) {
    SCOPED_TRACE(field);
    EXPECT_EQ(IsOn(field), on);
    const QPalette& colours = Find(field).palette();
    EXPECT_EQ(colours.color(QPalette::Active, QPalette::Base),
              look.color(on ? QPalette::Base : QPalette::Button));
    EXPECT_EQ(colours.color(QPalette::Active, QPalette::Text),
              on ? look.color(QPalette::ButtonText) : look.color(QPalette::Disabled, QPalette::Text));
  }
}

}  // namespace
}  // namespace pellorin::test
