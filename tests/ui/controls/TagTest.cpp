// Tags: reading one, each control's own, and switching controls by them.
#include <fstream>
#include <map>
#include <regex>

#include "tests/ui/WindowFixture.h"
#include "ui/controls/ControlTags.h"
#include "ui/controls/QTag.h"

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
  for (const auto& row : cases) {
    SCOPED_TRACE(row.tag);
    const QTag tag(row.tag);
    EXPECT_EQ(tag.OnGroups(), row.on);
    EXPECT_EQ(tag.OffGroups(), row.off);
    for (const std::string name : {"On", "on", "Off", "In", "in", "Out", "", "A", "B", " A", "AMember",
                                   "Mail", "mail", " Mail", "Sql", "Admin", "Queue"}) {
      const auto holds = [&](const Names& names) { return std::ranges::find(names, name) != names.end(); };
      EXPECT_EQ(tag.IsOnGroup(name), holds(row.on)) << name;
      EXPECT_EQ(tag.IsOffGroup(name), holds(row.off)) << name;
      EXPECT_EQ(tag.IsInGroup(name), holds(row.members)) << name;
      EXPECT_EQ(tag.IsInSection(name), holds(row.sections)) << name;
    }
  }
}

Names Found(const std::string& text, const char* pattern) {
  const std::regex expression(pattern);
  Names found;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
    found.push_back((*match)[1]);
  return found;
}

class Tags : public WindowFixture {
 protected:
  struct Control {
    std::string tag;
    Names captions;  // that it may have; those of its whole row
  };

  // The table of docs/controls.md: "| `name`, … | "caption", … | "tag" of all, or one for each |".
  static std::map<std::string, Control> Documented() {
    std::map<std::string, Control> controls;
    std::ifstream file(PROJECT_FOLDER "/docs/controls.md");
    for (std::string line; std::getline(file, line);) {
      std::smatch heading;
      if (std::regex_search(line, heading, std::regex("^## .*\\((frm\\w+), \"(.+)\"\\)")))
        controls[heading[1]] = {heading[2], {}};
      if (!line.starts_with("| `")) continue;
      const std::size_t second = line.find(" | "), last = line.rfind(" | ");
      const Names names = Found(line.substr(0, second), "`(\\w+)`");
      const Names tags = Found(line.substr(last), "\"([^\"]+)\"");
      const Names captions = Found(line.substr(second, last - second), "\"([^\"]+)\"");
      for (std::size_t index = 0; index < names.size(); ++index)
        controls[names[index]] = {tags.empty() ? "" : tags.at(tags.size() == 1 ? 0 : index), captions};
    }
    return controls;
  }
};

TEST_F(Tags, EveryControlHasTheNameTagAndCaptionThatIsDocumented) {
  ASSERT_TRUE(Start(kUsual));
  const auto documented = Documented();
  for (const auto& [name, control] : documented) {
    SCOPED_TRACE(name);
    const auto found = window->findChildren<QWidget*>(QString::fromStdString(name));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(ControlTags::TagOf(*found[0]), control.tag);
    const bool hasCaption = found[0]->inherits("QLabel") || found[0]->inherits("QAbstractButton");
    const std::string caption = hasCaption ? Text(name) : "";
    if (!caption.empty() && !control.captions.empty()) {  // rows of changing texts give none
      EXPECT_NE(std::ranges::find(control.captions, caption), control.captions.end()) << caption;
    }
  }
  for (const QWidget* widget : window->findChildren<QWidget*>())
    if (!ControlTags::TagOf(*widget).empty()) {
      EXPECT_EQ(documented.count(widget->objectName().toStdString()), 1u)
          << widget->objectName().toStdString();
    }
}

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
