#include "config/Section.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>

#include "config/SectionNames.h"
#include "tests/config/ServiceFolder.h"

namespace pellorin::test {
namespace {

using std::string_literals::operator""s;

template <typename Action>
int ErrorNumber(Action action) {
  return std::atoi(FailureOf(action).c_str());
}

TEST(KeyedCollection, KeepsOrderAndRefusesWithoutChangingAnything) {
  KeyedCollection<int> numbers;
  for (const char* key : {"one", "Two", "\u00C4rger"}) numbers.Add(key, std::make_unique<int>(1));
  EXPECT_EQ(ErrorNumber([&] { numbers.Add("\u00E4RGER", std::make_unique<int>(2)); }), 457);
  for (const std::size_t position : {0, 4}) {
    EXPECT_EQ(ErrorNumber([&] { numbers.Item(position); }), 9);
    EXPECT_EQ(ErrorNumber([&] { numbers.Remove(position); }), 9);
  }
  EXPECT_EQ(ErrorNumber([&] { numbers.Remove("three"); }), 5);
  EXPECT_EQ(numbers.Count(), 3u);
  numbers.Remove("tWO");
  numbers.Remove(1);
  numbers.Add("two", std::make_unique<int>(3));  // the key is free again
  EXPECT_EQ(&numbers.Item(1), &numbers.Item("\u00E4RGER"));
  EXPECT_EQ(numbers.Item(2), 3);
}

TEST(Section, LooksUpExactlyByNameAndIgnoringCaseByKey) {
  Section section;
  Setting& added = section.Add("sqlpassword", "x");
  EXPECT_EQ(section.GetValue("SqlPassword"), "");
  EXPECT_EQ(section.GetSetting("SqlPassword"), nullptr);
  EXPECT_EQ(section.GetSetting("sqlpassword"), &added);
  EXPECT_EQ(&section.Item("SQLPASSWORD"), &added);
  // Writing a name in another letter case is a duplicate, and nothing changes.
  EXPECT_EQ(ErrorNumber([&] { section.SetValue("SqlPassword", "y"); }), 457);
  EXPECT_EQ(Shown(section), "0{sqlpassword=x;}!");
  section.Delete("SqlPassword");
  EXPECT_EQ(section.Count(), 0u);
}

TEST(Section, TracksChangesAgainstWhatWasLoaded) {
  const Store store("[MAIL:a]\r\nTimeout=30\r\nServer=s\r\n");
  Section& section = store["MAIL:a"];
  EXPECT_TRUE(section.IsOriginal());
  const std::vector<std::tuple<const char*, const char*, bool>> steps = {
      {"Timeout", "30", false}, {"Timeout", "3", true},  {"Timeout", "30", false}, {"Server", "S", true},
      {"Server", "s", false},   {"Added", "", false},    {"Added", "x", true},     {"Added", "", false},
      {"Timeout", "5", true},   {"Added", "more", true},
  };
  for (const auto& [name, value, changed] : steps) {
    section.SetValue(name, value);
    EXPECT_EQ(section.HasChanges(), changed) << name << "=" << value;
    EXPECT_EQ(store->HasChanges(), changed);
  }
  section.RollBack();
  EXPECT_EQ(Shown(section), "0MAIL:a{Timeout=30;Server=s;Added=;}");
}

TEST(Section, DeletedNamesAreMangledForGood) {
  Section section;
  section.Name = "MAIL:smtp1";
  section.SetIsDeleted(true);
  const std::string name = section.Name;
  const std::regex form("MAIL:smtp1\\|\\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\}");
  EXPECT_TRUE(std::regex_match(name, form)) << name;
  EXPECT_TRUE(section.HasChanges()) << "though it has no entries";
  section.SetIsDeleted(false);
  EXPECT_EQ(section.Name, name);
  EXPECT_FALSE(section.HasChanges());
}

TEST(Section, ShowsItsNameWithoutThePrefixInAnyLetterCase) {
  const std::tuple<SectionType, const char*, const char*> rows[] = {
      {SectionType::Mail, "Mail:x", "x"}, {SectionType::Mail, "QUEUE:y", "QUEUE:y"},
      {SectionType::Sql, "SQL:", ""},     {SectionType::Queue, "MAIL:q", "MAIL:q"},
      {SectionType::Sql, "SQ", "SQ"},
  };
  for (const auto& [type, name, shown] : rows) {
    Section section;
    section.SectionType = type;
    section.Name = name;
    EXPECT_EQ(section.DisplayName(), shown) << "of " << name;
  }
}

TEST(SectionNames, RefusedNamesAreThoseThatWouldNotComeBack) {
  const ServiceFolder folder;
  for (const std::string name :
       {"HOST,1433", "a b", "\u20ACuro", "a[b", ";x", "a=b", "\"q\"", "<b>", "#1", "["}) {
    EXPECT_EQ(NameProblem(name), "") << name;
    const auto document = folder.Loaded();
    document->Add("MAIL:" + name, SectionType::Mail).SetValue("key", "value");
    document->Save();
    EXPECT_NE(folder.Loaded()->GetSection("MAIL:" + name), nullptr) << name;
  }
  for (const std::string& name :
       {"a:b"s, "a]"s, "a|b"s, " a"s, "a "s, "\ta"s, "a\n"s, "a\0b"s, "\x7F"s, "\u2603"s})
    EXPECT_NE(NameProblem(name), "") << name;
  EXPECT_EQ(NameProblem(std::string(200, 'a')), "");
  EXPECT_NE(NameProblem(std::string(201, 'a')), "");
}

TEST(SectionNames, OfQueuesFitAFileName) {
  const std::string tooLong = "A name cannot be longer than 200 characters.";
  std::string umlauts(1, 'q');
  for (int letter = 0; letter < 100; ++letter) umlauts += "\u00E4";
  EXPECT_EQ(QueueNameProblem(std::string(200, 'q')), "");
  EXPECT_EQ(QueueNameProblem(umlauts), tooLong) << "its file's name has 201 bytes";
}

}  // namespace
}  // namespace pellorin::test
