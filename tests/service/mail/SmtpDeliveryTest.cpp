#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <future>
#include <regex>

#include "base/Text.h"
#include "service/mail/Base64.h"
#include "service/mail/MailFailure.h"
#include "service/mail/SmtpDelivery.h"
#include "tests/service/mail/MailFixture.h"
#include "tests/service/mail/MailServerProcess.h"

namespace pellorin {
namespace {

using test::Login;
using test::MailFixture;
using test::MailServerProcess;
using test::Remote;
using test::RemoteWithin;

constexpr const char* kCannotConnect = "The transport failed to connect";

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}
double SecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(SmtpDelivery, ArrivesAsItWasSent) {
  const MailServerProcess server("server");
  ::setenv("all_proxy", "http://127.0.0.1:1", 1);  // diverts no mail
  std::string port = std::to_string(server.Port());
  port.insert(port.size() - 3, ",");
  MailFixture mail(
      "SendMethod=2\r\nRemoteServerName= Loc\xAAlhost \r\nRemoteServerPort=+" + port +
      "\r\nConnectionTimeout=.5e1\r\nDefaultDomain=example.net\r\nSenderEmail=Dienst f\xFCr Post <post>\r\n");
  mail.subject = "Grüße an alle, die diese lange Betreffzeile bis zu ihrem Ende lesen: ΑΒΓ 邮件";
  mail.body = "Zeile 1\r\n.\r\n..\r\n\r\nüöä " + std::string(100, 'x') + " 邮件\r\nblank \r\nFrom me";
  ASSERT_EQ(mail.Failure("\"Doe, Joe\" <joe@example.org>; Zoë <zoe>"), "sent");
  ::unsetenv("all_proxy");
  const std::string received = server.Received("mail.txt");
  const std::regex expected(
      "sender: post@example.net\n"
      "recipients: joe@example.org zoe@example.net\n"
      "encrypted: False\n"
      "hello: (\\[[0-9.]+\\]|[a-zA-Z0-9-]+\\.[a-zA-Z0-9.-]+)\n"
      "authenticated: None\n"
      "from: Dienst für Post <post@example.net>\n"
      "to: \"Doe, Joe\" <joe@example.org>, Zoë <zoe@example.net>\n"
      "subject: " +
      mail.subject +
      "\n"
      "defects: 0\n"
      "longest: ([0-6]?[0-9]|7[0-6])\n"
      "bare: False\n"
      "body: 'Zeile 1\\\\r\\\\n[.]\\\\r\\\\n[.][.]\\\\r\\\\n\\\\r\\\\nüöä x{100} 邮件\\\\r\\\\nblank "
      "\\\\r\\\\nFrom me\\\\r\\\\n'\n");
  EXPECT_TRUE(std::regex_match(received, expected)) << received;
}

TEST(SmtpDelivery, LogsIn) {
  for (const std::string kind : {"PLAIN", "NTLM LOGIN"}) {
    const MailServerProcess server("server", {"login=" + kind, "user=dü\\j o", "password=päss €:w"});
    EXPECT_EQ(MailFixture(Remote(server.Port(), Login("1", "d\xFC\\j o", "päss €:w"))).Failure(), "sent");
    EXPECT_TRUE(Contains(server.Received("mail.txt"), "authenticated: True")) << kind;
    EXPECT_EQ(MailFixture(Remote(server.Port(), Login("1", "d\xFC\\j o", "wrong"))).Failure(),
              "535 The mail server 127.0.0.1, port " + std::to_string(server.Port()) +
                  " refused the login:\r\n535-5.7.8 Not you\r\n535 5.7.8 Go away");
  }
}

TEST(SmtpDelivery, ProvesAnNtlmLogin) {
  const std::string hashOfPassword = "7583e62366f09025391f6c9316417ffc";  // MD4 of its UTF-16 form
  const MailServerProcess server(
      "server", {"login=NTLM PLAIN", "domain=OFFICE", "user=Jürgen", "password=" + hashOfPassword});
  const auto failure = [&](const std::string& user, const std::string& password) {
    return MailFixture(Remote(server.Port(), Login("2", user, password))).Failure();
  };
  EXPECT_EQ(failure("OFFICE\\J\xFCrgen", "päss:w/ord"), "sent");
  EXPECT_TRUE(Contains(server.Received("mail.txt"), "authenticated: True"));
  const std::string refused = "535 The mail server 127.0.0.1, port " + std::to_string(server.Port()) +
                              " refused the login:\r\n535-5.7.8 ***\r\n535 5.7.8 ";
  EXPECT_EQ(failure("OFFICE\\J\xFCrgen", "guess"), refused + "wrong password");
  EXPECT_EQ(failure("HOME\\joe", "päss:w/ord"), refused + "another user: HOME joe");
}

// "> command", "< reply" and "* note" of the last send.
std::string Said(LocalMailComponent& component) {
  std::string said;
  for (const ConversationLine& line : component.LastConversation())
    said += std::string(line.kind == ConversationLine::Kind::Sent       ? "> "
                        : line.kind == ConversationLine::Kind::Received ? "< "
                                                                        : "* ") +
            line.text + "\n";
  return said;
}

TEST(SmtpDelivery, WritesDownWhatWasSaidWithoutTheLogin) {
  const MailServerProcess server("server",
                                 {"tls=starttls", "login=PLAIN LOGIN", "user=joe", "password=s3cret-word"});
  for (const std::string password : {"s3cret-word", "wrong-w0rd"}) {
    MailFixture mail(Remote(server.Port(), Login("1", "joe", password)));
    EXPECT_EQ(mail.Send(), password == "s3cret-word");
    const std::string said = Said(mail.component);
    std::size_t from = 0;
    for (const std::string part :
         {"* Connected to 127.0.0.1", "< 220 ", "> EHLO ", "> STARTTLS", "* Encrypted with TLSv1",
          "* Certificate of ", " (not verified)", "* Certificate valid until ", "* Certificate issued by ",
          "> AUTH PLAIN"}) {
      const std::size_t found = said.find(part, from);
      ASSERT_NE(found, std::string::npos) << part << " is not said after the part before it:\n" << said;
      from = found;
    }
    for (const std::string& secret :
         {password, Base64(std::string(1, '\0') + "joe" + std::string(1, '\0') + password), Base64(password)})
      EXPECT_FALSE(Contains(said, secret)) << said;
    const bool isAccepted = Contains(said, "> RCPT TO:<joe@example.org>") &&
                            Contains(said, "* Message of ") && !Contains(said, mail.subject);
    EXPECT_EQ(isAccepted, password == "s3cret-word") << said;
    EXPECT_EQ(Contains(said, "* 535 "), password != "s3cret-word") << "a failure ends it:\n" << said;
  }
  MailFixture pickup("SendMethod=1\r\nLocalMailPickupFolder=");
  std::filesystem::create_directory(pickup.folder / "in");
  pickup.folder.Write(
      "Pellorin.ini",
      "[MAIL:Main]\r\nSendMethod=1\r\nSenderEmail=a@b\r\nLocalMailPickupFolder=" + (pickup.folder / "in"));
  EXPECT_TRUE(pickup.Send());
  EXPECT_TRUE(Said(pickup.component).starts_with("* Wrote " + (pickup.folder / "in/")))
      << Said(pickup.component);
}

TEST(SmtpDelivery, EncryptsWhereTheServerOffersItAndNeverFallsBack) {
  const MailServerProcess server("server", {"tls=starttls", "login=PLAIN", "user=joe", "password=secret"});
  EXPECT_EQ(MailFixture(Remote(server.Port(), Login("1", "joe", "secret"))).Failure(), "sent");
  EXPECT_TRUE(Contains(server.Received("mail.txt"), "encrypted: True"));
  EXPECT_TRUE(Contains(server.Received("mail.txt"), "authenticated: True"));

  const MailServerProcess implicit("server", {"tls=implicit"});
  const MailMessage message{{"", "a@b"}, {{"", "c@d"}}, "s", "b"};
  Conversation conversation;
  DeliverBySmtp({.host = "127.0.0.1", .port = implicit.Port(), .isEncryptedFromStart = true, .timeout = 5},
                message, BuildMessage(message, 0, "id"), {}, conversation);
  EXPECT_TRUE(Contains(implicit.Received("mail.txt"), "encrypted: True"));

  const std::pair<const char*, const char*> cases[] = {
      {"STARTTLS=454-Not|454 now", "454 The mail server 127.0.0.1, port "},
      {"STARTTLS=220 Go", "35 The encrypted connection (TLS) to the mail server 127.0.0.1, port "},
      {"STARTTLS=220 Go|220 text that is not encrypted",
       "8 The connection to the mail server 127.0.0.1, port "},
      {"STARTTLS=close", "56 The connection to the mail server 127.0.0.1, port "},
  };
  for (const auto& [reply, expected] : cases) {
    const MailServerProcess liar("script", {"EHLO=250-STARTTLS|250 AUTH PLAIN LOGIN", reply});
    const std::string failure = MailFixture(Remote(liar.Port(), Login("1", "joe", "secret"))).Failure();
    EXPECT_TRUE(failure.starts_with(expected)) << failure;
    EXPECT_FALSE(Contains(failure, kCannotConnect)) << failure;
    const std::string commands = liar.Received("commands.txt");
    EXPECT_TRUE(Contains(commands, "STARTTLS"));
    EXPECT_FALSE(Contains(commands, "AUTH") || Contains(commands, "MAIL")) << commands;
  }
  const MailServerProcess silent("script", {"GREET=silent"});
  try {
    DeliverBySmtp({.host = "127.0.0.1", .port = silent.Port(), .isEncryptedFromStart = true, .timeout = 1},
                  message, "", {}, conversation);
    ADD_FAILURE() << "a server that says nothing takes the mail";
  } catch (const MailFailure& failure) {
    EXPECT_TRUE(failure.Description().starts_with(kCannotConnect)) << failure.Description();
    EXPECT_TRUE(Contains(failure.Description(), "beginning of the encryption (TLS) within 1 second."))
        << failure.Description();
  }
}

TEST(SmtpDelivery, SaysWhatTheServerRefuses) {
  struct Case {
    std::string script;
    std::string settings;
    std::string failure;  // P stands for the server and its port
    std::string notSent;  // a command
  };
  const std::string login = Login("1", "joe", "secret");
  const Case cases[] = {
      {"GREET=554-Go|554 away", "", "554 P refused the connection:\r\n554-Go\r\n554 away", "EHLO"},
      {"EHLO=500 What;HELO=502-No|502 no", "",
       "502 P refused this machine's introduction (EHLO):\r\n502-No\r\n502 no", "MAIL"},
      {"EHLO=500 What;MAIL=550 no", "", "550 P refused the sender service@example.com:\r\n550 no", "RCPT"},
      {"DOT=251 perhaps", "",
       "8 P gave an unexpected answer to the message:\r\n251 perhaps\r\nIt is not known whether the message "
       "was delivered.",
       ""},
      {"DATA=250 OK", "", "8 P gave an unexpected answer to DATA:\r\n250 OK", "Subject"},
      {"DATA=451 No", "", "451 P refused to take the message (DATA):\r\n451 No", "Subject"},
      {"DOT=554-No|554 spam \xFC", "", "554 P refused the message:\r\n554-No\r\n554 spam ü", ""},
      {"EHLO=250 AUTH LOGIN;AUTH=334 VXNlcm5hbWU6;LOGIN=334 x", login,
       "67 Login failed: the dialogue with the mail server P did not follow the rules of this kind of login. "
       "Nothing was sent.",
       "MAIL"},
      {"EHLO=250-AUTH PLAIN|250 AUTH XYZ", Login("2", "D\\joe", "secret"),
       "67 Login failed: the mail server P does not offer the NTLM login that is configured (it offers PLAIN "
       "XYZ). Nothing was sent.",
       "AUTH"},
      {"EHLO=250 AUTH plain", login,
       "67 Login failed: the basic login that the mail server P offers cannot be used: it does not spell "
       "AUTH and the login's name in capital letters. Nothing was sent.",
       "MAIL"},
      {"EHLO=250 AUTH NTLM;AUTH=334 ;LOGIN=334 "
       "TlRMTVNTUAACAAAAAAAAAAAAAAABAgAAASNFZ4mrze8AAAAAAAAAAAAAAAAAAAAA",
       Login("2", "D\\joe", "secret"),
       "67 Login failed: the mail server P asks for the first version of NTLM without encryption, which "
       "would give the password away. Nothing was sent.",
       "TlRMTVNTUAAD"},
      {"EHLO=250-StartTls|250 AUTH PLAIN LOGIN", login,
       "64 The encryption that the mail server P offers cannot be used: it does not spell STARTTLS in "
       "capital letters. Nothing was sent.",
       "AUTH"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.script);
    const MailServerProcess server("script", SplitAt(";", one.script));
    const std::string name = "127.0.0.1, port " + std::to_string(server.Port());
    std::string expected = one.failure;
    const std::string full = Contains(expected, "the mail server P") ? name : "The mail server " + name;
    expected.replace(expected.find("P "), 1, full);
    EXPECT_EQ(MailFixture(Remote(server.Port(), one.settings)).Failure(), expected);
    if (!one.notSent.empty()) {
      EXPECT_FALSE(Contains(server.Received("commands.txt"), one.notSent)) << one.failure;
    }
  }
  const MailServerProcess server("server", {"refuse=b@example.org"});
  EXPECT_EQ(
      MailFixture(Remote(server.Port())).Failure("a@example.org, b@example.org"),
      "550 The mail server 127.0.0.1, port " + std::to_string(server.Port()) +
          " refused the recipient b@example.org:\r\n550-5.1.1 No such user\r\n550-5.1.1 b@example.org\r\n"
          "550 5.1.1 Sorry");
  EXPECT_EQ(server.Received("mail.txt"), "");
}

TEST(SmtpDelivery, SaysThatItCannotConnect) {
  int free = 0;
  { free = MailServerProcess("script").Port(); }
  const std::string port = std::to_string(free);
  EXPECT_EQ(MailFixture(Remote(free)).Failure(),
            "7 The transport failed to connect to the mail server 127.0.0.1, port " + port +
                ".\r\nConnection refused");
  // A name that no name server needs to be asked about.
  EXPECT_EQ(MailFixture(Remote(free, "", "no..such-host")).Failure(),
            "6 The transport failed to connect to the mail server no..such-host, port " + port +
                ".\r\nCould not resolve host: no..such-host");
  EXPECT_TRUE(Contains(MailFixture(RemoteWithin("0", free)).Failure(), kCannotConnect));
}

TEST(SmtpDelivery, KeepsTheTimeoutInEveryPhase) {
  struct Case {
    std::string script, failure;
    int timeout = 1;
    std::string mode = "script";
  };
  const std::string inDoubt = "\r\nIt is not known whether the message was delivered.";
  const Case cases[] = {
      {"", "No answer within 1 second.", 1, "deaf"},
      {"GREET=silent", "No greeting within 1 second."},
      {"GREET=close", "The server closed the connection instead of the greeting."},
      {"EHLO=421 later;HELO=silent",
       "421 later\r\nNo answer to this machine's simple introduction (HELO) within 1 second."},
      {"EHLO=250 STARTTLS;STARTTLS=220 Go;TLS=silent",
       "No answer to the beginning of the encryption (TLS) within 1 second."},
      {"tls=starttls;silent=encrypted", "No answer to this machine's introduction (EHLO) within 2 seconds.",
       2, "server"},
      {"MAIL=silent", "No answer to the sender's address (MAIL) within 1 second."},
      {"DOT=silent", "No answer to the message within 2 seconds." + inDoubt, 2},
      {"DOT=close", "The server closed the connection instead of the answer to the message." + inDoubt},
      // Taking leave never takes more than two seconds, and none beyond the time-out.
      {"DOT=late;QUIT=silent", "sent", 3},
      {"QUIT=silent", "sent", 9},
      {"MAIL=550 no;QUIT=silent", "refused the sender", 9},
  };
  std::vector<std::future<void>> running;
  for (const Case& one : cases)
    running.push_back(std::async(std::launch::async, [&] {
      SCOPED_TRACE(one.mode + " " + one.script);
      const MailServerProcess server(one.mode, SplitAt(";", one.script));
      MailFixture mail(RemoteWithin(std::to_string(one.timeout), server.Port()));
      std::string failure;
      EXPECT_LT(SecondsOf([&] { failure = mail.Failure(); }), std::min(one.timeout, 2) + 1.5);
      EXPECT_TRUE(Contains(failure, one.failure)) << failure;
      const bool isConnected = one.mode != "deaf" && !one.script.starts_with("GREET=");
      EXPECT_EQ(Contains(failure, kCannotConnect), !isConnected) << failure;
      EXPECT_EQ(Contains(failure, "127.0.0.1, port"), failure != "sent") << failure;
    }));
}

TEST(SmtpDelivery, AsksItsWatchAndEndsWhenItSaysSo) {
  struct Case {
    std::string script;
    const char* lastCommand;
    const char* failure;
  };
  const Case cases[] = {
      {"GREET=silent", "", "42 The test was cancelled."},
      {"EHLO=250 STARTTLS;STARTTLS=220 Go;TLS=silent", "STARTTLS\r\n", "42 The test was cancelled."},
      {"DOT=silent", "\n.\r\n",
       "42 The test was cancelled.\r\nIt is not known whether the message was delivered."},
      // A refusal is told, whatever the watch says then.
      {"DOT=550 no;QUIT=silent", "QUIT\r\n", " refused the message:\r\n550 no"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.script);
    const MailServerProcess server("script", SplitAt(";", one.script));
    MailFixture mail(RemoteWithin("0", server.Port()));
    int asked = 0;
    int refused = 0;
    std::chrono::steady_clock::time_point refusedAt;
    mail.component.SetWatch([&] {
      if (++asked < 12 || !Contains(server.Received("commands.txt"), one.lastCommand)) return true;
      refusedAt = std::chrono::steady_clock::now();
      ++refused;
      return false;
    });
    const std::string failure = mail.Failure();
    EXPECT_TRUE(failure.ends_with(one.failure)) << failure;
    EXPECT_LT(std::chrono::steady_clock::now() - refusedAt, std::chrono::seconds(1));
    EXPECT_EQ(refused, 1);
  }
  // Once the mail is accepted it is sent, whatever the watch says.
  const MailServerProcess server("script", {"QUIT=silent"});
  MailFixture mail(Remote(server.Port()));
  mail.component.SetWatch([&] { return !Contains(server.Received("commands.txt"), "QUIT"); });
  EXPECT_EQ(mail.Failure(), "sent");
  mail.component.SetWatch([]() -> bool { throw std::runtime_error("watch"); });
  EXPECT_THROW(mail.Send(), std::runtime_error);
}

}  // namespace
}  // namespace pellorin
