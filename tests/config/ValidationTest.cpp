#include <gtest/gtest.h>

#include "tests/config/ServiceFolder.h"

namespace pellorin::test {
namespace {

struct Row {
  std::string changed;                // over values that are valid
  std::vector<std::string> messages;  // in the order of the report; none: valid
};

class Validation : public testing::Test {
 protected:
  Validation() : document(SystemFiles(), folder.Path(), LocaleConventions()) {}

  Section& Add(const std::string& name, SectionType type, const std::string& values) {
    Section& section = document.Add(name, type);
    SetValues(section, values);
    return section;
  }

  void Check(SectionType type, const std::string& valid, const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      Section& section = Add("section", type, valid);
      SetValues(section, row.changed);
      SCOPED_TRACE(row.changed);
      std::string report;
      for (const std::string& message : row.messages) report += message + "\r\n";
      for (int round = 0; round < 2; ++round) {  // starts anew each time
        EXPECT_EQ(section.Validate(), row.messages.empty());
        EXPECT_EQ(section.ValidationError(), report);
      }
      section.SetIsDeleted(true);
      EXPECT_TRUE(section.Validate());
      EXPECT_EQ(section.ValidationError(), "");
    }
  }

  ServiceFolder folder;
  Ini document;
};

constexpr const char* kValidMail =
    "SendMethod=2;RemoteServerName=host;RemoteServerPort=25;SenderEmail=a@b;ConnectionTimeout=30";

TEST_F(Validation, OfMailServers) {
  const std::string name = "- Remote Server Name must be provided";
  const std::string port = "- Remote Server Port must be a number. The most common value is 25";
  const std::string pickup = "- Local Pickup Folder must be provided";
  const std::string noFolder = "- Local Pickup Folder does not exist";
  const std::string user = "- Username must be provided";
  const std::string both = "- When using NTML authentication, both username and domain must be provided";
  const std::string domain = "- When using NTLM authentication, domain must be provided";
  const std::string sender = "- Sender's email must be provided";
  const std::string timeout = "- Timeout must be a number";
  const std::string ntlm = "AuthenticationMethod=2;Username=";
  Check(
      SectionType::Mail, kValidMail,
      {
          {"", {}},
          {"RemoteServerPort= +1,000.5e3 ;ConnectionTimeout=-1", {}},
          {"SendMethod=1;RemoteServerName=", {pickup}},
          {"SendMethod=1;LocalMailPickupFolder=" + folder / "absent", {noFolder}},
          {"SendMethod=1;LocalMailPickupFolder=" + folder.IniPath(), {noFolder}},  // a file
          {"SendMethod=1;LocalMailPickupFolder=" + folder.Path(), {}},
          {"SendMethod=3;RemoteServerName=;RemoteServerPort=", {}},
          {"AuthenticationMethod=1", {user}},
          {"AuthenticationMethod=1;Username=bob", {}},
          {ntlm, {both}},
          {ntlm + "a\\b\\c", {both}},
          {ntlm + "\\bob", {domain}},
          {ntlm + "CORP\\", {user}},
          {ntlm + "\\", {user, domain}},
          {ntlm + "CORP\\bob", {}},
          {"RemoteServerName=;RemoteServerPort=x;AuthenticationMethod=2;SenderEmail=;ConnectionTimeout=0x1F",
           {timeout, sender, both, port, name}},
      });
}

TEST_F(Validation, OfTheAdministrationOnlyWithQueues) {
  const std::string user = "- Scheduler Username must be provided";
  const std::string password = "- Scheduler Password must be provided";
  Check(SectionType::Admin, "", {{"", {}}});
  Section& queue = Add("Night", SectionType::Queue, "");
  Check(SectionType::Admin, "",
        {{"", {password, user}},
         {"SchedulerUsername=me", {password}},
         {"SchedulerPassword=x", {user}},
         {"SchedulerUsername=me;SchedulerPassword=x", {}}});
  queue.SetIsDeleted(true);
  Check(SectionType::Admin, "", {{"", {}}});
}

TEST_F(Validation, OfInstances) {
  const std::string user = "- Username must be provided";
  const std::string primary = "- Primary mail server must be provided";
  Check(SectionType::Sql, "PrimaryMailServer=m",
        {{"", {}},
         {"ConnectionType=Sql", {user}},
         {"ConnectionType=sql", {}},
         {"ConnectionType=Sql;SqlUsername=sa", {}},
         {"PrimaryMailServer=", {primary}},
         {"ConnectionType=Sql;PrimaryMailServer=", {primary, user}}});
}

constexpr const char* kValidQueue = "every=1;occurstype=every;occursevery=2;span=Hour(s)";

TEST_F(Validation, OfQueues) {
  const std::string every = "- The field Every must be a number";
  const std::string days = "- Weekly frequency is selected, but no days have been specified";
  const std::string filter = "- You chose to queue by default based on a filter but the filter is empty";
  const std::string servers =
      "- You chose to queue by default but did not specify what servers the queue should apply to";
  const std::string hours = "- The daily frequency field Every must be a number";
  const std::string span = "- The daily frequency time span must be provided";
  const std::string once = "- Occurs once value should be a date";
  const std::string starting = "- The Starting At field has an invalid value";
  const std::string ending = "- The Ending At field has an invalid value";
  const std::string start = "- The Start Date field has an invalid value";
  const std::string end = "- The End Date field has an invalid value";
  const std::string before = "- The End Date occurs before the Start Date";
  const auto dates = [](const std::string& startDate, const std::string& endDate) {
    return "hasenddate=1;startdate=" + startDate + ";enddate=" + endDate;
  };
  Check(SectionType::Queue, kValidQueue,
        {
            {"", {}},
            {"frequency=weekly;days=monday", {}},
            {"queuebydefault=filter;queuebydefaultservers=A", {filter}},
            {"queuebydefault=filter", {servers, filter}},
            {"queuebydefault=all", {servers}},
            {"queuebydefault=  ", {}},
            {"queuebydefault=None", {servers}},
            {"occursevery=x;span=", {span, hours}},
            {"occurstype=;span=", {span}},
            {"occurstype=once;occursevery=;span=", {once}},
            {"occurstype=once;occursonce=11:05 PM", {}},
            {"starttime=x;endtime=24:00", {ending, starting}},
            {"starttime=1:00;endtime=11:59:59 PM", {}},
            {"enddate=x", {}},  // without hasenddate
            {dates("11/22/2026", "11/22/2026"), {}},
            {dates("11/22/2026 10:00", "11/22/2026 09:59"), {before}},
            {dates("12/1/2026", "1/12/2027"), {}},
            {dates("11/22/2026", ""), {end}},
            {dates("11/22/2026", "2026-02-30"), {end}},
            {dates("", "11/22/2026"), {start}},
            {dates("x", "11/22/2026"), {start, start}},  // told by two rules
            {dates("x", "y"), {end, start}},
            {"every=;frequency=weekly;queuebydefault=filter;occursevery=;span=;starttime=x;endtime=x;"
             "startdate=x;hasenddate=1",
             {end, start, ending, starting, span, hours, servers, filter, days, every}},
        });
}

TEST_F(Validation, OfTheDocumentListsTheLastSectionFirst) {
  Add("MAIL:good", SectionType::Mail, kValidMail);
  EXPECT_TRUE(document.Validate());
  Add("SQL:A", SectionType::Sql, "");
  Add("deleted", SectionType::Sql, "").SetIsDeleted(true);
  Section& queue = Add("Night", SectionType::Queue, "every=x;occurstype=once");
  EXPECT_FALSE(document.Validate());
  EXPECT_EQ(
      document.ValidationError(),
      "\r\nQUEUE:Night\r\n- Occurs once value should be a date\r\n- The field Every must be a number\r\n"
      "\r\n\r\nSQL:A\r\n- Primary mail server must be provided\r\n\r\n");
  queue.SetIsDeleted(true);
  document.GetSection("SQL:A")->SetValue("PrimaryMailServer", "m");
  EXPECT_TRUE(document.Validate());
  EXPECT_EQ(document.ValidationError(), "");
  Section& twin = Add("SQL:A", SectionType::Sql, "");
  twin.SetIsTwin();  // which no save would write
  EXPECT_TRUE(document.Validate());
  twin.SetValue("Timeout", "1");
  EXPECT_FALSE(document.Validate());
}

}  // namespace
}  // namespace pellorin::test
