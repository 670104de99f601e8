#include "config/Section.h"

#include <gtest/gtest.h>

#include <functional>

#include "config/SectionNames.h"
#include "tests/config/ServiceFolder.h"

namespace pellorin {
namespace {

using test::FailureOf;
using test::ServiceFolder;
using test::Shown;
using std::string_literals::operator""s;

int ErrorNumber(const std::function<void()>& action) {
  try {
    action();
    return 0;
  } catch (const CollectionError& error) {
    EXPECT_NE(error.Description(), "");
    return error.Number();
  }
}

TEST(KeyedCollection, KeepsOrderAndRefusesWithoutChangingAnything) {
  KeyedCollection<std::string> texts;
  const auto add = [&](const std::string& key) { texts.Add(key, std::make_unique<std::string>(key)); };
  const auto all = [&] {
    std::string joined;
    for (const auto& text : texts) joined += *text + " ";
    return joined;
  };
  for (const char* key : {"one", "Two", "\u00C4rger", "four"}) add(key);
  for (const char* key : {"ONE", "two", "\u00E4RGER"}) EXPECT_EQ(ErrorNumber([&] { add(key); }), 457) << key;
  for (const std::size_t position : {std::size_t{0}, std::size_t{5}, ~std::size_t{0}}) {
    EXPECT_EQ(ErrorNumber([&] { texts.Item(position); }), 9) << position;
    EXPECT_EQ(ErrorNumber([&] { texts.Remove(position); }), 9) << position;
  }
  EXPECT_EQ(ErrorNumber([&] { texts.Item("three"); }), 5);
  EXPECT_EQ(ErrorNumber([&] { texts.Remove("three"); }), 5);
  EXPECT_EQ(all(), "one Two \u00C4rger four ");
  EXPECT_EQ(texts.Item("TWO"), "Two");
  EXPECT_EQ(&texts.Item(3), &texts.Item("\u00E4rger"));

  texts.Remove("tWO");
  texts.Remove(1);
  EXPECT_EQ(all(), "\u00C4rger four ");
  add("two");  // the key is free again
  EXPECT_EQ(texts.Item(3), "two");
  EXPECT_EQ(&texts.Item(2), &texts.Item("FOUR"));
}

TEST(Section, LooksUpExactlyByNameAndIgnoringCaseByKey) {
  Section section;
  EXPECT_EQ(section.Count(), 0u);
  EXPECT_FALSE(section.HasChanges());
  Setting& added = section.Add("sqlpassword", "x");
  EXPECT_EQ(added.Section, &section);
  EXPECT_EQ(added.OriginalValue, "");
  EXPECT_EQ(section.GetValue("SqlPassword"), "");
  EXPECT_EQ(section.GetSetting("SqlPassword"), nullptr);
  EXPECT_EQ(section.GetSetting("sqlpassword"), &added);
  EXPECT_EQ(&section.Item("SQLPASSWORD"), &added);
  // Writing a name in another letter case is a duplicate, and nothing changes.
  EXPECT_EQ(ErrorNumber([&] { section.SetValue("SqlPassword", "y"); }), 457);
  EXPECT_EQ(ErrorNumber([&] { section.Delete("absent"); }), 5);
  EXPECT_EQ(ErrorNumber([&] { section.Delete(2); }), 9);
  EXPECT_EQ(Shown(section), "0{sqlpassword=x;}!");
  section.Delete("SqlPassword");
  EXPECT_EQ(section.Count(), 0u);
}

TEST(Section, TracksChangesAgainstWhatWasLoaded) {
  const ServiceFolder folder("[MAIL:a]\r\nTimeout=30\r\nServer=s\r\n");
  const auto document = folder.Loaded();
  Section& section = *document->GetSection("MAIL:a");
  EXPECT_TRUE(section.IsOriginal());
  const std::vector<std::tuple<const char*, const char*, bool>> steps = {
      {"Timeout", "30", false}, {"Timeout", "3", true},  {"Timeout", "30", false}, {"Server", "S", true},
      {"Server", "s", false},   {"Added", "", false},    {"Added", "x", true},     {"Added", "", false},
      {"Timeout", "5", true},   {"Added", "more", true},
  };
  for (const auto& [name, value, changed] : steps) {
    section.SetValue(name, value);
    EXPECT_EQ(section.HasChanges(), changed) << name << "=" << value;
    EXPECT_EQ(document->HasChanges(), changed);
  }
  section.RollBack();
  EXPECT_EQ(Shown(section), "0MAIL:a{Timeout=30;Server=s;Added=;}");
}

TEST(Section, DeletedNamesAreMangledAndFreeAgain) {
  Section section;
  section.Name = "MAIL:smtp1";
  section.SetIsDeleted(true);
  std::string form = section.Name.substr(11);
  for (char& character : form)
    if ("0123456789ABCDEF"s.find(character) != std::string::npos) character = 'h';
  EXPECT_EQ(section.Name.substr(0, 11), "MAIL:smtp1|");
  EXPECT_EQ(form, "{hhhhhhhh-hhhh-hhhh-hhhh-hhhhhhhhhhhh}");
  EXPECT_TRUE(section.HasChanges()) << "though it has no entries";
  const std::string name = section.Name;
  section.SetIsDeleted(false);
  EXPECT_EQ(section.Name, name);
  EXPECT_FALSE(section.HasChanges());
}

TEST(Section, ShowsItsNameWithoutThePrefixInAnyLetterCase) {
  const std::vector<std::tuple<SectionType, const char*, const char*>> rows = {
      {SectionType::Mail, "MAIL:smtp1", "smtp1"},
      {SectionType::Mail, "Mail:x", "x"},
      {SectionType::Mail, "QUEUE:y", "QUEUE:y"},
      {SectionType::Sql, "sql:Main", "Main"},
      {SectionType::Sql, "SQL:", ""},
      {SectionType::Admin, "admin:Pellorin", "Pellorin"},
      {SectionType::Queue, "MAIL:q", "MAIL:q"},
      {SectionType::Sql, "SQ", "SQ"},
  };
  for (const auto& [type, name, shown] : rows) {
    Section section;
    section.SectionType = type;
    section.Name = name;
    EXPECT_EQ(section.DisplayName(), shown);
  }
}

TEST(SectionNames, RefusedNamesAreThoseThatWouldNotComeBack) {
  const ServiceFolder folder;
  const std::vector<std::string> names = {
      "smtp1", "HOST,1433", "a b", "\u20ACuro", "a[b", ";x",  "a=b", "\"q\"",
      "<b>",   "#1",        "[",  //
      "a:b",   "a]",        "a|b", " a",        "a ",  "\ta", "a\n", std::string("a\0b", 3),
      "\x7F",  "\u2603"};
  const std::size_t good = 11;
  for (std::size_t number = 0; number < names.size(); ++number) {
    const std::string& name = names[number];
    EXPECT_EQ(NameProblem(name).empty(), number < good) << name;
    if (number >= good) continue;
    const auto document = folder.Loaded();
    document->Add("MAIL:" + name, SectionType::Mail).SetValue("key", "value");
    document->Save();
    const Section* reloaded = folder.Loaded()->GetSection("MAIL:" + name);
    EXPECT_NE(reloaded, nullptr) << name;
  }
}

}  // namespace
}  // namespace pellorin
