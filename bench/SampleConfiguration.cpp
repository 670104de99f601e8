#include "bench/SampleConfiguration.h"

#include <cstdio>

#include "config/PasswordScrambling.h"

namespace pellorin {
namespace {

std::string ThreeDigits(int number) {
  char text[16];
  std::snprintf(text, sizeof text, "%03d", number);
  return text;
}

std::string Password(int number) {
  return EncryptString("Secret-" + ThreeDigits(number), kPasswordKey);
}

std::string MailSection(int number) {
  const std::string server = "smtp" + ThreeDigits(number) + ".example.com";
  return "[" + MailSectionName(number) + "]\r\n" +
         "SendMethod=2\r\n"
         "RemoteServerName=" +
         server + "\r\n" +
         "RemoteServerPort=25\r\n"
         "LocalMailPickupFolder=\r\n"
         "AuthenticationMethod=2\r\n"
         "Username=EXAMPLE\\mailer" +
         ThreeDigits(number) + "\r\n" + "Password=" + Password(number) + "\r\n" +
         "SenderEmail=database@example.com\r\n"
         "DefaultDomain=example.com\r\n"
         "ConnectionTimeout=30\r\n";
}

std::string SqlSection(int number) {
  return "[SQL:" + InstanceName(number) + "]\r\n" +
         "ConnectionType=Sql\r\n"
         "SqlUsername=mailer\r\n"
         "SqlPassword=" +
         Password(number) + "\r\n" +
         "Timeout=300\r\n"
         "Width=0\r\n"
         "DefaultFormat=HTML\r\n"
         "EncodeHTML=1\r\n"
         "AnsiAttachment=0\r\n"
         "Stylesheet=default.css\r\n"
         "PrimaryMailServer=smtp001\r\n"
         "SecondaryMailServer=smtp002\r\n"
         "ConfiguredDB=master\r\n"
         "AccessType=sysadmin\r\n"
         "AllowTempTables=0\r\n"
         "EmailWhenQueryEmpty=1\r\n"
         "ExceptionMode=STOP\r\n";
}

std::string AdminSection() {
  return "[ADMIN:Pellorin]\r\nSchedulerUsername=EXAMPLE\\scheduler\r\nSchedulerPassword=" + Password(0) +
         "\r\n";
}

}  // namespace

std::string MailSectionName(int number) {
  return "MAIL:smtp" + ThreeDigits(number);
}

std::string InstanceName(int number) {
  return "HOST" + ThreeDigits(number) + "\\SALES";
}

std::string UsualIniFile() {
  std::string text = AdminSection();
  for (int number = 1; number <= 12; ++number) text += MailSection(number);
  for (int number = 1; number <= 7; ++number) text += SqlSection(number);
  return text;
}

std::string InstancesIniFile(int instances, const std::function<std::string(int instance)>& queuesOf) {
  std::string text = AdminSection() + MailSection(1) + MailSection(2);
  for (int number = 1; number <= instances; ++number)
    text += SqlSection(number) + "Queues=" + queuesOf(number) + "\r\n";
  return text;
}

std::string LargeIniFile(int sections, std::size_t sectionSize) {
  std::string text;
  for (int number = 1; number <= sections; ++number) {
    std::string section = MailSection(number);
    for (int entry = 1; section.size() < sectionSize; ++entry)
      section += "Remark" + ThreeDigits(entry) + "=Reaches the branch office by way of relay " +
                 ThreeDigits(number) + "\r\n";
    text += section;
  }
  return text;
}

std::string QueueFile(int number) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!-- Mail of the warehouse, sent in the evening. -->\n"
         "<queue title=\"Report " +
         ThreeDigits(number) +
         "\" frequency=\"weekly\" every=\"1\" "
         "days=\"monday,wednesday,friday\" occurstype=\"every\" occursonce=\"11:05 PM\" occursevery=\"2\" "
         "span=\"Hour(s)\" starttime=\"12:00 AM\" endtime=\"11:59:59 PM\" startdate=\"11/22/2026\" "
         "enddate=\"11/22/2027\" hasenddate=\"1\" queuebydefault=\"filter\" "
         "queuebydefaultservers=\"HOST001\\SALES,HOST002\\SALES\" "
         "queuebydefaultfilter=\"Subject=Report###Recipients=warehouse@example.com\"/>\n";
}

}  // namespace pellorin
