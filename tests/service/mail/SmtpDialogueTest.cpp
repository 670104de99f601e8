// What may go on after which replies, and what of a reply is shown.
#include <gtest/gtest.h>

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
  return "220 x\r\n250 AUTH NTLM\r\n334\r\n334 " + Base64(message) + "\r\n";
}

TEST(SmtpDialogue, StopsBeforeAnythingGoesOutAgainstTheSettings) {
  struct Case {
    SmtpLogin login;
    std::string replies;
    bool goesOn;
    SmtpStep step;
    SmtpObstacle obstacle = SmtpObstacle::None;
    bool isEncrypted = false;
  };
  using enum SmtpObstacle;
  const Case cases[] = {
      {SmtpLogin::Anonymous, "220 x\r\n250-x\r\n250 AUTH NTLM\r\n", true, SmtpStep::Sender},
      {SmtpLogin::Basic, "220 x\r\n250-x\r\n250 AUTH NTLM\tPLAIN\r\n", true, SmtpStep::Login},
      {SmtpLogin::Basic, "220 x\r\n250-x\r\n250 AUTH NTLM PLAINER\r\n", false, SmtpStep::Login, LoginMissing},
      {SmtpLogin::Ntlm, "220 x\r\n250-AUTH=NTLM\r\n250 AUTH PLAIN\r\n", false, SmtpStep::Login, LoginMissing},
      {SmtpLogin::Basic, "220 x\r\n500 what\r\n250 AUTH PLAIN\r\n", false, SmtpStep::Login, LoginMissing},
      {SmtpLogin::Basic, "220 x\r\n250 Auth PLAIN\r\n", false, SmtpStep::Login, LoginMisspelt},
      {SmtpLogin::Ntlm, "220 x\r\n250 AUTH ntlm PLAIN\r\n", false, SmtpStep::Login, LoginMisspelt},
      {SmtpLogin::Basic, "220 x\r\n250-auth LOGIN\r\n250 AUTH LOGIN\r\n", true, SmtpStep::Login},
      {SmtpLogin::Anonymous, "220 x\r\n250 auth login\r\n", true, SmtpStep::Sender},
      // Encryption that is offered must begin, and what was offered before it counts no more.
      {SmtpLogin::Basic, "220 x\r\n250-STARTTLS\r\n250 AUTH PLAIN\r\n454 no\r\n", false, SmtpStep::StartTls},
      {SmtpLogin::Anonymous, "220 x\r\n250 STARTTLS\r\n250 OK\r\n", false, SmtpStep::StartTls},
      {SmtpLogin::Basic, "220 x\r\n250-STARTTLS\r\n250 AUTH PLAIN\r\n220 go\r\n250 x\r\n", false,
       SmtpStep::Login, LoginMissing},
      {SmtpLogin::Anonymous, "220 x\r\n250 StartTLS\r\n", false, SmtpStep::Hello, EncryptionMisspelt},
      {SmtpLogin::Anonymous, "220 x\r\n250 StartTLS\r\n", true, SmtpStep::Sender, None, true},
      // The first version of NTLM, which a challenge without target information asks for, in clear.
      {SmtpLogin::Ntlm, Challenge(0x80, 4), true, SmtpStep::Login},
      {SmtpLogin::Ntlm, Challenge(0x80, 0), false, SmtpStep::Login, LoginOutdated},
      {SmtpLogin::Ntlm, Challenge(0x08, 4), false, SmtpStep::Login, LoginOutdated},
      {SmtpLogin::Ntlm, Challenge(0x08, 0), true, SmtpStep::Login, None, true},
      {SmtpLogin::Basic, "220 x\r\n250 AUTH PLAIN\r\n250 OK\r\n", false, SmtpStep::Login},
      {SmtpLogin::Basic, "220 x\r\n250 AUTH PLAIN\r\n334 x\r\n334\r\n235 in\r\n", true, SmtpStep::Sender},
      {SmtpLogin::Anonymous, "220 x\r\n250 x\r\n250 1\r\n250 2\r\n250 3\r\n354 go\r\n250 ok\r\n500 x\r\n",
       true, SmtpStep::Accepted},
      {SmtpLogin::Anonymous, "220 x\r\n250 x\r\n250 1\r\n250 2\r\n550 no\r\n250 x\r\n354 x\r\n250 x\r\n",
       true, SmtpStep::Recipient},
  };
  for (const Case& one : cases) {
    SmtpDialogue dialogue(one.login, one.isEncrypted, 2);
    bool goesOn = true;
    for (const char byte : one.replies) goesOn = goesOn && dialogue.Take({&byte, 1});
    EXPECT_EQ(goesOn, one.goesOn) << one.replies;
    EXPECT_EQ(dialogue.Step(), one.step) << one.replies;
    EXPECT_EQ(dialogue.Obstacle(), one.obstacle) << one.replies;
  }
}

TEST(SmtpReplyText, ShowsNothingOfALogin) {
  struct Case {
    const char* password;
    const char* line;
    const char* shown;
  };
  const Case cases[] = {
      {"secret", "535 secret c2VjcmV0 AGpvZQBzZWNyZXQ= am9l joe", "535 *** *** *** *** joe"},
      {"secret", "535 you said <joe/secret>, notsecretly", "535 you said <joe/***>, not***ly"},
      {"a", "535-a bad answer: a", "535-*** bad answer: ***"},
      {"535", "535 5.7.8 code 535, 5350", "535 5.7.8 code ***, 5350"},
      {"a\tb\x01", "535 a\tb\x01 a b", "535 *** a b"},
      {"p\xC3\xA4ss", "535 p\xC3\xA4ss\xFF p\xE4ss\x1B[1m", "535 ***\xC3\xBF *** [1m"},
      {"x", "535 5.7.8 TlRMTVNTUAADAAAA+/==, TlRMTVNTUAADAA", "535 5.7.8 ***, ***"},
      {"x", "53", "53"},
  };
  for (const Case& one : cases)
    EXPECT_EQ(ShownReply({one.line}, "joe", one.password), "\r\n" + std::string(one.shown));
  EXPECT_EQ(ShownReply({"550-AAA=", "550 no"}, "", ""), "\r\n550-AAA=\r\n550 no");
}

}  // namespace
}  // namespace pellorin
