#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <regex>

#include "service/mail/MailServerSettings.h"
#include "tests/service/mail/MailFixture.h"
#include "tests/support/FailingFiles.h"

namespace pellorin {
namespace {

namespace fs = std::filesystem;
using test::MailFixture;

std::string Pickup(const std::string& folder) {
  return "SendMethod=1\r\nDefaultDomain=example.net\r\nLocalMailPickupFolder=" + folder + "\r\n";
}
std::vector<std::string> FilesOf(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
  return names;
}

TEST(PickupFolder, HoldsTheCompleteMessageUnderItsFinalName) {
  const test::TemporaryFolder pickup;
  MailFixture mail(Pickup(pickup.Path()));
  mail.subject = "Grüße";
  ASSERT_EQ(mail.Failure("Zoë <zoe>; joe@example.org"), "sent");
  const std::vector<std::string> names = FilesOf(pickup.Path());
  ASSERT_EQ(names.size(), 1u);
  EXPECT_TRUE(std::regex_match(names[0], std::regex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.eml")))
      << names[0];
  const std::string text = pickup.Read(names[0]);
  EXPECT_TRUE(
      text.starts_with("X-Sender: service@example.com\r\nX-Receiver: zoe@example.net\r\nX-Receiver: "
                       "joe@example.org\r\nDate: "))
      << text;
  EXPECT_NE(text.find("\r\nSubject: =?utf-8?B?R3LDvMOfZQ==?=\r\n"), std::string::npos) << text;
  EXPECT_TRUE(std::regex_search(text, std::regex("\r\nMessage-ID: <[0-9A-F]{32}@example.com>\r\n"))) << text;
  EXPECT_TRUE(text.ends_with("\r\n\r\nOne\r\n\r\n.\r\nTwo\r\n")) << text;
}

TEST(PickupFolder, ThatCannotBeUsedIsNamed) {
  const test::TemporaryFolder folder;
  folder.Write("file", "");
  fs::create_directory(folder / "locked");
  fs::permissions(folder / "locked", fs::perms::owner_read | fs::perms::owner_exec);
  const auto failure = [](const std::string& path) { return MailFixture(Pickup(path)).Failure(); };
  const auto named = [&](int number, const std::string& name, const std::string& problem) {
    return std::to_string(number) + " The pickup folder " + folder / name + " " + problem;
  };
  EXPECT_EQ(failure(folder / "none"), named(ENOENT, "none", "does not exist."));
  EXPECT_EQ(failure(folder / "file"), named(ENOTDIR, "file", "is not a folder."));
  EXPECT_EQ(failure(folder / "locked"), named(EACCES, "locked", "is read-only."));
  EXPECT_EQ(failure(""), "43 The pickup folder is not set.");
  EXPECT_EQ(failure("tests"), "43 The pickup folder tests is not a full path.");
  EXPECT_TRUE(fs::is_empty(folder / "locked"));
}

// Looks into the folder whenever something is about to be written.
class WatchingFiles : public test::FailingFiles {
 public:
  explicit WatchingFiles(std::string folder) : FailingFiles(SystemFiles()), folder_(std::move(folder)) {}
  std::size_t Write(FileHandle file, std::string_view bytes) override {
    for (const std::string& name : FilesOf(folder_))
      EXPECT_FALSE(name.ends_with(".eml")) << name << " is there before it is written";
    return FailingFiles::Write(file, bytes);
  }

 private:
  std::string folder_;
};

TEST(PickupFolder, HoldsNothingAfterAnyFailureAndTheWholeMailAfterSuccess) {
  const test::TemporaryFolder pickup;
  WatchingFiles files(pickup.Path());
  MailFixture mail(Pickup(pickup.Path()), files);
  int failures = 0;
  for (int operation = 1; operation == 1 || files.HasFailed(); ++operation) {
    files.FailAt(operation);
    const std::string failure = mail.Failure();
    const std::vector<std::string> names = FilesOf(pickup.Path());
    ASSERT_EQ(names.size(), failure == "sent" ? 1u : 0u) << "where operation " << operation << " fails";
    if (failure != "sent") {
      ++failures;
      EXPECT_NE(failure.find("Injected"), std::string::npos) << failure;
      continue;
    }
    EXPECT_TRUE(names[0].ends_with(".eml") && pickup.Read(names[0]).ends_with("\r\n.\r\nTwo\r\n"));
    fs::remove(pickup / names[0]);
  }
  EXPECT_GE(failures, 8);
}

TEST(MailServerSettings, ThatNoMailCanBeSentWithAreNamed) {
  const std::string remote = "SendMethod=2\r\nRemoteServerName=x\r\n";
  const std::pair<std::string, const char*> cases[] = {
      {"SendMethod=3\r\n", "neither a pickup folder nor a remote server"},
      {"SendMethod=2\r\nRemoteServerPort=25\r\nConnectionTimeout=1\r\n", "there is no server name"},
      {remote + "RemoteServerPort=0\r\n", "the port \"0\" is not a whole number"},
      {remote + "RemoteServerPort=65536\r\n", "the port \"65536\" is not a whole number"},
      {remote + "RemoteServerPort=2.5\r\n", "the port \"2.5\" is not a whole number"},
      {remote + "RemoteServerPort=25\r\nConnectionTimeout=-1\r\n", "the timeout \"-1\" is not a number"},
      {test::Remote(25, "AuthenticationMethod=4\r\n"), "no authentication is chosen"},
      {test::Remote(25, "AuthenticationMethod=1\r\n"), "there is no user name"},
      {test::Remote(25, "", "a b"), "The mail server a b, port 25 cannot be used"},
      {test::Remote(25, "", "user@x"), "cannot be used"},
      {test::Remote(25, "SenderEmail=a@b;c@d\r\n"), "There is more than one sender"},
      {test::Remote(25, "SenderEmail=\r\n"), "There is no email address"},
      {test::Remote(25, test::Login("2", "D\\u", "€")), "The password holds a character that an NTLM login"},
      {test::Remote(25, "Port=1\r\nPORT=2\r\n"), "holds an entry twice"},
  };
  for (const auto& [settings, expected] : cases) {
    MailFixture mail(settings);
    const std::string failure = mail.Failure();
    EXPECT_NE(failure.find(expected), std::string::npos) << failure;
  }
  for (const auto& [port, isEncrypted] : {std::pair(465, true), {587, false}, {25, false}}) {
    const MailFixture mail(test::RemoteWithin(".2", port));
    const SmtpServer server = LoadMailServer(SystemFiles(), mail.folder.Path(), {}, "Main").server;
    EXPECT_EQ(server.isEncryptedFromStart, isEncrypted);
    EXPECT_EQ(server.timeout, 1);  // not 0, which has no limit
  }
  const MailFixture german(test::RemoteWithin("2,5", 25));
  LocaleConventions locale;
  locale.decimalSeparator = ",";
  locale.thousandsSeparator = ".";
  EXPECT_EQ(LoadMailServer(SystemFiles(), german.folder.Path(), locale, "Main").server.timeout, 3);
  MailFixture mail("");
  EXPECT_FALSE(
      mail.component.Send({.recipients = "a@b", .subject = "", .message = "", .mailServer = "Other"}));
  EXPECT_EQ(mail.component.LastErrorDescription(), "There is no mail server Other in Pellorin.ini.");
}

}  // namespace
}  // namespace pellorin
