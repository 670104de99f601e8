#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>

#include "service/mail/Base64.h"
#include "service/mail/MailAddress.h"
#include "service/mail/MailFailure.h"
#include "service/mail/MailMessage.h"

namespace pellorin {
namespace {

// The addresses as "name|address" lines, or the reason why there are none.
std::string Parsed(const std::string& text, const std::string& domain = "default.org") {
  try {
    std::string lines;
    for (const MailAddress& address : ParseAddresses(text, domain))
      lines += (lines.empty() ? "" : "\n") + address.name + "|" + address.address;
    return lines;
  } catch (const MailFailure& failure) {
    EXPECT_EQ(failure.Number(), kBadMailArgument);
    return failure.Description();
  }
}

TEST(MailAddress, AreParsedAsUsersTypeThem) {
  const std::pair<const char*, const char*> cases[] = {
      {" a@b ; c@d,e ; ", "|a@b\n|c@d\n|e@default.org"},
      {"Joe Doe <joe@x.org>", "Joe Doe|joe@x.org"},
      {"\"Doe, Joe; \\\"JD\\\"\" <joe>, Zoë Grün <zoe@x.org>",
       "Doe, Joe; \"JD\"|joe@default.org\nZoë Grün|zoe@x.org"},
      {"\"a b\"@[127.0.0.1]", "|\"a b\"@[127.0.0.1]"},
      {"o'neil+tag@x-y.org", "|o'neil+tag@x-y.org"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(Parsed(text), expected) << text;
  EXPECT_EQ(Parsed("joe", " @own.net"), "|joe@own.net");
}

TEST(MailAddress, RefusesWhatCouldBecomeAnythingElse) {
  const std::pair<std::string, const char*> cases[] = {
      {"a@b\r\nRCPT TO:<c@d>", "a line break or another control character (code 13)"},
      {std::string("a\0@b", 4), "(code 0)"},
      {" ; ", "There is no email address"},
      {"a@b>", "not of the form name@domain"},
      {"Joe <a@b> c", "not of the form Name <name@domain>"},
      {"<a@b>,<c@d", "not of the form Name <name@domain>"},
      {"Joe <a@b> <c@d>", "not of the form name@domain"},
      {"a b@c", "not of the form name@domain"},
      {"a@b@c", "not of the form name@domain"},
      {"@b", "not of the form name@domain"},
      {"a@", "not of the form name@domain"},
      {"\"a@b", "a quote is not closed"},
      {"zoë@x.org", "only its display name"},
  };
  for (const auto& [text, expected] : cases) {
    const std::string problem = Parsed(text);
    EXPECT_NE(problem.find(expected), std::string::npos) << text << ": " << problem;
  }
  EXPECT_EQ(Parsed("joe", ""),
            "The email address joe cannot be used: it has no domain, and there is no default domain.");
  EXPECT_NE(Parsed("joe", "x\r\nDATA").find("The default domain holds a line break"), std::string::npos);
}

std::string Built(const std::string& subject, const std::string& body,
                  std::vector<MailAddress> to = {{"", "joe@example.org"}}) {
  return BuildMessage({{"", "me@example.com"}, std::move(to), subject, body}, 0, "id1");
}
// The part from one header's name to the end.
std::string From(const std::string& header, const std::string& message) {
  const std::size_t begin = message.find("\r\n" + header + ":");
  return begin == std::string::npos ? "no " + header : message.substr(begin + 2);
}

TEST(MailMessage, HasAllHeadersInOrder) {
  ::setenv("TZ", "XYZ-5:30", 1);
  ::tzset();
  EXPECT_EQ(Built("Hello", "One\nTwo\r\rFour"),
            "Date: Thu, 01 Jan 1970 05:30:00 +0530\r\nFrom: me@example.com\r\nTo: joe@example.org\r\n"
            "Message-ID: <id1@example.com>\r\nSubject: Hello\r\nMIME-Version: 1.0\r\n"
            "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: 7bit\r\n\r\n"
            "One\r\nTwo\r\n\r\nFour\r\n");
  ::setenv("TZ", "XYZ3:30", 1);
  ::tzset();
  EXPECT_EQ(MailDate(1795388700), "Sun, 22 Nov 2026 19:35:00 -0330");
  ::unsetenv("TZ");
  ::tzset();
}

TEST(MailMessage, EncodesWhatIsNotPlain) {
  const std::string x39(39, 'x');
  const std::tuple<std::string, std::string> subjects[] = {
      {std::string(67, 'x'), "Subject: " + std::string(67, 'x') + "\r\n"},
      {"Grüße", "Subject: =?utf-8?B?R3LDvMOfZQ==?=\r\n"},
      {"=?x?=", "Subject: =?utf-8?B?PT94Pz0=?=\r\n"},
      {" x", "Subject: =?utf-8?B?IHg=?=\r\n"},
      // No character is torn, and no line is too long.
      {std::string(38, 'x') + "ü" + x39, "Subject: =?utf-8?B?" + Base64(std::string(38, 'x')) + "?=\r\n " +
                                             "=?utf-8?B?" + Base64("ü" + std::string(37, 'x')) + "?=\r\n " +
                                             "=?utf-8?B?" + Base64("xx") + "?=\r\n"},
  };
  for (const auto& [subject, expected] : subjects) {
    const std::string header = From("Subject", Built(subject, ""));
    EXPECT_EQ(header.substr(0, header.find("MIME")), expected) << "for the subject " << subject;
  }
  const std::tuple<std::string, std::string> bodies[] = {
      {"ü=\nblank \n.", "=C3=BC=3D\r\nblank=20\r\n.\r\n"},
      {std::string(76, 'x'), std::string(76, 'x') + "\r\n"},
      {std::string(77, 'x'), std::string(75, 'x') + "=\r\nxx\r\n"},
      {std::string(74, 'x') + "ü", std::string(74, 'x') + "=\r\n=C3=BC\r\n"},
      {std::string("\0\t", 2), "=00=09\r\n"},
  };
  for (const auto& [body, expected] : bodies) {
    const std::string message = Built("s", body);
    EXPECT_EQ(message.substr(message.find("\r\n\r\n") + 4), expected) << "for the body " << body;
  }
}

TEST(MailMessage, WritesNamesSoThatTheyAddNoAddress) {
  const std::string header =
      From("To", Built("s", "", {{"Doe, \"J\" <x@y>", "joe@example.org"}, {"Zoë", "zoe@example.org"}}));
  EXPECT_EQ(header.substr(0, header.find("Message-ID")),
            "To: \"Doe, \\\"J\\\" <x@y>\" <joe@example.org>, =?utf-8?B?Wm/Dqw==?=\r\n <zoe@example.org>\r\n");
  EXPECT_THROW(Built("a\r\nBcc: x@y", ""), MailFailure);
  EXPECT_THROW(Built("s", "", {{"J\r\nBcc: x@y", "joe@example.org"}}), MailFailure);
}

}  // namespace
}  // namespace pellorin
