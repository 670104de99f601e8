// The mail component over a new program folder. The lines of a MAIL section tell it how to send.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "config/PasswordScrambling.h"
#include "service/mail/LocalMailComponent.h"
#include "tests/support/TemporaryFolder.h"

namespace pellorin::test {

inline std::string Remote(int port, const std::string& more = {}, const std::string& host = "127.0.0.1",
                          const std::string& timeout = "5") {
  return "SendMethod=2\r\nRemoteServerName=" + host + "\r\nRemoteServerPort=" + std::to_string(port) +
         "\r\nConnectionTimeout=" + timeout + "\r\n" + more;
}
inline std::string RemoteWithin(const std::string& timeout, int port) {
  return Remote(port, "", "127.0.0.1", timeout);
}

// "1": basic, "2": NTLM.
inline std::string Login(const std::string& method, const std::string& user, const std::string& password) {
  return "AuthenticationMethod=" + method + "\r\nUsername=" + user +
         "\r\nPassword=" + EncryptString(password, kPasswordKey) + "\r\n";
}

struct MailFixture {
  explicit MailFixture(const std::string& settings, FileOperations& files = SystemFiles())
      : component(files, folder.Path()) {
    const bool hasSender = settings.find("SenderEmail=") != std::string::npos;
    folder.Write("Pellorin.ini",
                 "[MAIL:Main]\r\n" + settings + (hasSender ? "" : "SenderEmail=service@example.com\r\n"));
  }
  bool Send(const std::string& recipients = "joe@example.org") {
    return component.Send(
        {.recipients = recipients, .subject = subject, .message = body, .mailServer = "Main"});
  }
  // Everything of the failure; "sent" when there was none.
  std::string Failure(const std::string& recipients = "joe@example.org") {
    if (Send(recipients)) return "sent";
    EXPECT_EQ(component.LastErrorSource(), "PellorinConfig.exe, MailComponent, Send");
    return std::to_string(component.LastErrorNumber()) + " " + component.LastErrorDescription();
  }

  TemporaryFolder folder;
  LocalMailComponent component;
  std::string subject = "Pellorin: Test";
  std::string body = "One\r\n\r\n.\r\nTwo";
};

}  // namespace pellorin::test
