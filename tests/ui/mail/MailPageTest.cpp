// The page of the mail servers, by keys and clicks, read back from the saved file.
#include "config/PasswordScrambling.h"
#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

class Mail : public WindowFixture {
 protected:
  std::string Server(const std::string& sendMethod, const std::string& login) const {
    return "[MAIL:base]\r\nSendMethod=" + sendMethod +
           "\r\nRemoteServerName=host\r\nRemoteServerPort=25\r\nLocalMailPickupFolder=" + program +
           "\r\nAuthenticationMethod=" + login +
           "\r\nUsername=DOM\\bob\r\nPassword=" + EncryptString("secret", kPasswordKey) +
           "\r\nSenderEmail=a@b\r\nDefaultDomain=d\r\nConnectionTimeout=30\r\n" +
           Replaced(kSql, "=one", "=base");
  }
  std::string Chosen() const {
    return Checked("optLocalMailServer optRemoteMailServer optAnonymous optBasic optNTLM");
  }
};

TEST_F(Mail, ShowsServersAndStoresNothingByIt) {
  const std::string odd =
      "[mail:odd]\r\nSendMethod=9\r\nAuthenticationMethod=7\r\nSenderEmail= x \r\nConnectionTimeout=1\r\n";
  const std::string ini = kMailOne + kMailTwo + odd + kSql;
  ASSERT_TRUE(Start(ini));
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one", "two", "odd"}));
  Choose("cmbMailServer", 1);
  EXPECT_EQ(Chosen(), "optRemoteMailServer optNTLM");
  EXPECT_EQ(Text("txtRemoteServerName txtRemoteServerPort txtLocalPickupFolder txtMailUsername txtMailDomain "
                 "txtMailPassword txtSenderEmail txtDefaultDomain txtConnectionTimeout"),
            "two.example|587||bob|DOM||a@two|two|0");
  Choose("cmbMailServer", 2);
  EXPECT_EQ(Chosen(), "");  // unknown words choose no option
  Choose("cmbMailServer", 0);
  EXPECT_EQ(Chosen(), "optRemoteMailServer optAnonymous");
  EXPECT_EQ(Text("txtMailDomain"), "");
  EXPECT_FALSE(IsModified());
  SaveSuccessfully();
  EXPECT_EQ(IniBytes(), ini);
}

TEST_F(Mail, WritesEachControlUnderItsKey) {
  const auto password = [](const char* text) { return "Password=" + EncryptString(text, kPasswordKey); };
  const struct {
    std::string control, keys, line, newLine;  // without keys: a click
  } cases[] = {
      {"optRemoteMailServer", "", "SendMethod=1", "SendMethod=2"},
      {"txtRemoteServerName", "mx=1;x", "ServerName=host", "ServerName=mx=1;x"},
      {"txtRemoteServerPort", "465", "ServerPort=25", "ServerPort=465"},
      {"optNTLM", "", "AuthenticationMethod=0", "AuthenticationMethod=2"},
      {"optBasic", "", "AuthenticationMethod=2", "AuthenticationMethod=1"},
      {"txtMailUsername", "eve", "Username=DOM\\bob", "Username=eve"},
      {"txtMailPassword", "n=w", password("secret"), password("n=w")},
      {"optAnonymous", "", "AuthenticationMethod=1", "AuthenticationMethod=0"},
      {"optLocalMailServer", "", "SendMethod=2", "SendMethod=1"},
      {"txtLocalPickupFolder", "/", "PickupFolder=" + program, "PickupFolder=/"},
      {"txtSenderEmail", "it's@c", "SenderEmail=a@b", "SenderEmail=it's@c"},
      {"txtDefaultDomain", "e", "DefaultDomain=d", "DefaultDomain=e"},
      {"txtConnectionTimeout", "0", "Timeout=30", "Timeout=0"},
  };
  std::string ini = Server("1", "0");
  ASSERT_TRUE(Start(ini));
  for (const auto& row : cases) {
    row.keys.empty() ? Click(row.control) : Replace(row.control, row.keys);
    EXPECT_TRUE(IsModified()) << row.control;
    SaveSuccessfully();
    ini = Replaced(ini, row.line + "\r\n", row.newLine + "\r\n");
    EXPECT_EQ(IniBytes(), ini);
  }
}

TEST_F(Mail, OptionsSwitchTheirFieldsAndMoveTheFocus) {
  ASSERT_TRUE(Start(kUsual));
  const std::string local = "txtLocalPickupFolder Label16";
  const std::string remote = "txtRemoteServerName txtRemoteServerPort Label17 Label19";
  const std::string basic = " txtMailUsername txtMailPassword Label20 Label21";
  const std::string domain = " txtMailDomain Label22";
  const std::tuple<const char*, std::string, const char*> cases[] = {
      {"optLocalMailServer", local, "txtLocalPickupFolder"},
      {"optRemoteMailServer", remote, "optRemoteMailServer"},
      {"optNTLM", remote + basic + domain, "txtMailUsername"},
      {"optBasic", remote + basic, "txtMailUsername"},
      {"optAnonymous", remote, "optAnonymous"}};
  for (const auto& [option, on, focus] : cases) {
    Click(option);
    EXPECT_EQ(OnOf(local + " " + remote + basic + domain), on) << option;
    EXPECT_EQ(FocusName(), focus);
  }
  EXPECT_EQ(Chosen(), "optRemoteMailServer optAnonymous");
}

TEST_F(Mail, UserNamesOfTheLogins) {
  const struct {
    const char *login, *stored, *shown, *typedUser, *typedDomain, *result;
  } cases[] = {
      {"2", "DOM\\bob", "bob|DOM", "eve", "CORP", "CORP\\eve"},
      {"2", "bob", "bob|", "", "D", "D\\bob"},
      {"2", "\\bob", "bob|", "eve", "", "\\eve"},
      {"2", "D\\b\\c", "b|D", "", "", "D\\b\\c"},  // showing stores nothing
      {"1", "D\\b", "D\\b|", "", "", "D\\b"},
      {"1", "b", "b|", "D\\e", "", "D\\e"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.stored);
    ASSERT_TRUE(Start(Replaced(Server("2", row.login), "DOM\\bob", row.stored)));
    EXPECT_EQ(Text("txtMailUsername txtMailDomain"), row.shown);
    if (*row.typedUser != '\0') Replace("txtMailUsername", row.typedUser);
    if (*row.typedDomain != '\0') Replace("txtMailDomain", row.typedDomain);
    Click("optAnonymous");  // stores no name, and makes the server one that can be saved
    SaveSuccessfully();
    EXPECT_EQ(Stored("MAIL:base", "Username"), row.result);
  }
}

TEST_F(Mail, AddsAServerWithItsDefaults) {
  const std::string ini = kMailOne + kSql;
  ASSERT_TRUE(Start(ini));
  Add("");  // cancelled
  Add("oNE", Warning("Duplicate Name", "A server with this name already exists"));
  Add(std::string(201, 'a'), Warning("Invalid Name", "A name cannot be longer than 200 characters."));
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one"}));
  EXPECT_FALSE(IsModified());
  Add("DB1");  // an instance of that name is no server
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"DB1", "one"}));
  EXPECT_EQ(Text("cmbMailServer") + " " + FocusName(), "DB1 txtSenderEmail");
  messages.WillShow(Faulty("sever DB1", "Sender's email must be provided"));
  Click("btnAddNewMailServer");  // not before this one is valid
  Replace("txtSenderEmail", "a@b");
  SaveSuccessfully();
  EXPECT_EQ(IniBytes(), ini +
                            "[MAIL:DB1]\r\nAuthenticationMethod=0\r\nSendMethod=2\r\nRemoteServerName=DB1\r\n"
                            "RemoteServerPort=25\r\nConnectionTimeout=30\r\nSenderEmail=a@b\r\n");
}

TEST_F(Mail, DeletesUnusedServers) {
  ASSERT_TRUE(Start(kMailTwo + kMailOne));
  Delete("btnDeleteMailSettings", "settings for server two", Answer::No);
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"two", "one"}));
  Replace("txtSenderEmail", "");  // an invalid one can be deleted all the same
  Delete("btnDeleteMailSettings", "settings for server two");
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one"}));
  EXPECT_EQ(Text("txtSenderEmail"), "a@one");
  Delete("btnDeleteMailSettings", "settings for server one");  // the last one leaves only Add
  EXPECT_EQ(OnOf("cmbMailServer txtSenderEmail btnDeleteMailSettings btnTestMailServer optAnonymous "
                 "txtRemoteServerName Label23 btnAddNewMailServer btnSave"),
            "btnAddNewMailServer btnSave");
  EXPECT_EQ(Chosen(), "");
  EXPECT_EQ(Text("txtSenderEmail txtRemoteServerPort cmbMailServer"), "||");
  Add("two");  // the name is free again
  EXPECT_TRUE(IsOn("txtRemoteServerPort") && !IsOn("txtMailUsername"));
  Type("x@two");
  SaveSuccessfully();
  EXPECT_EQ(Stored("MAIL:two", "SenderEmail"), "x@two");
  EXPECT_EQ(Stored("MAIL:one", "SenderEmail"), "no section MAIL:one");
}

TEST_F(Mail, KeepsServersThatAreInUse) {
  ASSERT_TRUE(Start(kMailOne + "[SQL:A]\r\nPrimaryMailServer=one\r\nSecondaryMailServer=one\r\n[SQL:B]\r\n"
                               "PrimaryMailServer=two\r\nSecondaryMailServer=one\r\n[SQL:C]\r\n"
                               "PrimaryMailServer=One\r\n"));
  messages.WillShow(
      Plain("Cannot remove settings for this server because it's used for:\r\n"
            "- Primary mail server for SQL Server A\r\n"
            "- Secondary mail server for SQL Server A\r\n"
            "- Secondary mail server for SQL Server B"));
  Click("btnDeleteMailSettings");
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one"}));
}

TEST_F(Mail, CannotLeaveAFaultyServerByKeyboardEither) {
  ASSERT_TRUE(Start(kUsual));
  Click("optLocalMailServer");
  Replace("txtLocalPickupFolder", "/no/such");
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_T}) {
    Find("cmbMailServer").setFocus();
    messages.WillShow(Faulty("sever one", "Local Pickup Folder does not exist"));
    Press(key);
    EXPECT_EQ(Text("cmbMailServer txtLocalPickupFolder") + "|" + FocusName(),
              "one|/no/such|txtLocalPickupFolder");
  }
  Choose("cmbMailServer", 0);  // the same again: no check
  Click("optRemoteMailServer");
  Choose("cmbMailServer", 1);
  EXPECT_EQ(Text("cmbMailServer txtRemoteServerName"), "two|two.example");
}

TEST_F(Mail, TellsTwoServersOfOneNameApart) {
  ASSERT_TRUE(Start(kMailOne + kMailTwo + kMailOne));
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one", "two", "one"}));
  Choose("cmbMailServer", 2);
  Replace("txtDefaultDomain", "third");
  Choose("cmbMailServer", 0);
  EXPECT_EQ(Text("txtDefaultDomain"), "");
  Choose("cmbMailServer", 2);
  EXPECT_EQ(Text("txtDefaultDomain"), "third");
  Replace("txtSenderEmail", "");
  messages.WillShow(Faulty("sever one", "Sender's email must be provided"));
  Choose("cmbMailServer", 0);
  EXPECT_EQ(Find<QComboBox>("cmbMailServer").currentIndex(), 2);
  Replace("txtSenderEmail", "a@one");
  // Only the first of them can be reached in the file: the other is neither removed nor written.
  messages.WillShow(
      Warning("PellorinConfig",
              "The settings for server one cannot be deleted here, because the file holds two sections of "
              "this name. Please edit the section [MAIL:one] of this file with a text editor:\r\n" +
                  IniPath()));
  Click("btnDeleteMailSettings");
  const std::string before = IniBytes();
  Save(SaveFailure("MAIL:one",
                   "The file holds two sections of this name, and only the first can be "
                   "reached. Please rename one in the file.",
                   "nothing", "MAIL:one", IniPath()));
  EXPECT_EQ(IniBytes(), before);
}

}  // namespace
}  // namespace pellorin::test
