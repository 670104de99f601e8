#include <gtest/gtest.h>

#include <tuple>

#include "base/Text.h"
#include "service/mail/Base64.h"
#include "service/mail/SmtpDialogue.h"
#include "service/mail/SmtpReplyText.h"

namespace pellorin {
namespace {

// A server's message of an NTLM login, with so many bytes of target information.
std::string Challenge(unsigned char flags, unsigned char informationLength) {
  std::string message = std::string("NTLMSSP\0\2\0\0\0", 12) + std::string(36, '\0');
  message[22] = static_cast<char>(flags);
  message[40] = static_cast<char>(informationLength);
  return "250 AUTH NTLM|334|334 " + Base64(message);
}

TEST(SmtpDialogue, StopsBeforeAnythingGoesOutAgainstTheSettings) {
  struct Case {
    SmtpLogin login;
    std::string replies;  // after the greeting, "|" between them
    bool goesOn;
    SmtpStep step;
    SmtpObstacle obstacle = SmtpObstacle::None;
    bool isEncrypted = false;
  };
  using enum SmtpLogin;
  using enum SmtpObstacle;
  const Case cases[] = {
      {Anonymous, "250-x|250 AUTH NTLM", true, SmtpStep::Sender},
      {Basic, "250-x|250 AUTH NTLM\tPLAIN", true, SmtpStep::Login},
      {Basic, "250-x|250 AUTH NTLM PLAINER", false, SmtpStep::Login, LoginMissing},
      {Ntlm, "250-AUTH=NTLM|250 AUTH PLAIN", false, SmtpStep::Login, LoginMissing},
      {Basic, "500 what|250 AUTH PLAIN", false, SmtpStep::Login, LoginMissing},
      {Basic, "250 Auth PLAIN", false, SmtpStep::Login, LoginMisspelt},
      {Ntlm, "250 AUTH ntlm PLAIN", false, SmtpStep::Login, LoginMisspelt},
      {Basic, "250-auth LOGIN|250 AUTH LOGIN", true, SmtpStep::Login},
      {Anonymous, "250 auth login", true, SmtpStep::Sender},
      // Encryption that is offered must begin, and what was offered before it counts no more.
      {Basic, "250-STARTTLS|250 AUTH PLAIN|454 no", false, SmtpStep::StartTls},
      {Anonymous, "250 STARTTLS|250 OK", false, SmtpStep::StartTls},
      {Basic, "250-STARTTLS|250 AUTH PLAIN|220 go|250 x", false, SmtpStep::Login, LoginMissing},
      {Anonymous, "250 StartTLS", false, SmtpStep::Hello, EncryptionMisspelt},
      {Anonymous, "250 StartTLS", true, SmtpStep::Sender, None, true},
      // The first version of NTLM, which a challenge without target information asks for, in clear.
      {Ntlm, Challenge(0x80, 4), true, SmtpStep::Login},
      {Ntlm, Challenge(0x80, 0), false, SmtpStep::Login, LoginOutdated},
      {Ntlm, Challenge(0x08, 4), false, SmtpStep::Login, LoginOutdated},
      {Ntlm, Challenge(0x08, 0), true, SmtpStep::Login, None, true},
      {Basic, "250 AUTH PLAIN|250 OK", false, SmtpStep::Login},
      {Basic, "250 AUTH PLAIN|334 x|334|235 in", true, SmtpStep::Sender},
      {Anonymous, "250 x|250 1|250 2|250 3|354 go|250 ok|500 x", true, SmtpStep::Accepted},
      {Anonymous, "250 x|250 1|250 2|550 no|250 x|354 x|250 x", true, SmtpStep::Recipient},
  };
  for (const Case& one : cases) {
    SmtpDialogue dialogue(one.login, one.isEncrypted, 2);
    bool goesOn = true;
    for (const std::string& line : SplitAt("|", "220 x|" + one.replies))
      for (const char byte : line + "\r\n") goesOn = goesOn && dialogue.Take({&byte, 1});
    EXPECT_EQ(goesOn, one.goesOn) << one.replies;
    EXPECT_EQ(dialogue.Step(), one.step) << one.replies;
    EXPECT_EQ(dialogue.Obstacle(), one.obstacle) << one.replies;
  }
}

TEST(SmtpReplyText, ShowsNothingOfALogin) {
  const std::tuple<const char*, const char*, std::string> cases[] = {
      {"secret", "535 secret c2VjcmV0 AGpvZQBzZWNyZXQ= am9l joe", "535 *** *** *** *** joe"},
      {"secret", "535 you said <joe/secret>, notsecretly", "535 you said <joe/***>, not***ly"},
      {"a", "535-a bad answer: a", "535-*** bad answer: ***"},
      {"535", "535 5.7.8 code 535, 5350", "535 5.7.8 code ***, 5350"},
      {"a\tb\x01", "535 a\tb\x01 a b", "535 *** a b"},
      {"p\xC3\xA4ss", "535 p\xC3\xA4ss\xFF p\xE4ss\x1B[1m", "535 ***\xC3\xBF *** [1m"},
      {"x", "535 5.7.8 TlRMTVNTUAADAAAA+/==, TlRMTVNTUAADAA", "535 5.7.8 ***, ***"},
      {"x", "53", "53"},
  };
  for (const auto& [password, line, shown] : cases)
    EXPECT_EQ(ShownReply({line}, "joe", password), "\r\n" + shown) << line << " with password " << password;
  EXPECT_EQ(ShownReply({"550-AAA=", "550 no"}, "", ""), "\r\n550-AAA=\r\n550 no");
}

}  // namespace
}  // namespace pellorin
