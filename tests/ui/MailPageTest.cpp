// The page of the mail servers, by keys and clicks, read back from the saved file.
#include <QAbstractButton>

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
           "\r\nSenderEmail=a@b\r\nDefaultDomain=d\r\nConnectionTimeout=30\r\n";
  }
  std::string Chosen() const {  // the chosen options
    std::string chosen;
    for (const char* name :
         {"optLocalMailServer", "optRemoteMailServer", "optAnonymous", "optBasic", "optNTLM"})
      if (Find<QAbstractButton>(name).isChecked()) chosen += std::string(name + 3) + " ";
    return chosen;
  }
  void AddRefused(const std::string& name, const std::string& title, const std::string& reason) {
    messages.WillAsk("New Mail Server", "Please enter the name of the new mail server", name);
    messages.WillShow(Warning(title, reason));
    Click("btnAddNewMailServer");
  }
  void Delete(const std::string& name, Answer answer = Answer::Yes) {
    messages.WillShow(Question("Delete Section", "Do you want to delete settings for server " + name + "?",
                               MessageButtons::YesNo),
                      answer);
    Click("btnDeleteMailSettings");
  }
  static Message Faulty(const std::string& name, const std::string& errors) {
    return Warning("Validation Errors",
                   "Settings for sever " + name + " need to be corrected: \r\n" + errors);
  }
};

TEST_F(Mail, ShowsServersAndStoresNothingByIt) {
  const std::string odd =
      "[mail:odd]\r\nSendMethod=9\r\nAuthenticationMethod=7\r\nSenderEmail= x \r\nConnectionTimeout=1\r\n";
  const std::string ini = kMailOne + kMailTwo + odd + kSql;
  ASSERT_TRUE(Start(ini));
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one", "two", "odd"}));
  Choose("cmbMailServer", 1);
  EXPECT_EQ(Chosen(), "RemoteMailServer NTLM ");
  EXPECT_EQ(
      Texts("txtRemoteServerName txtRemoteServerPort txtLocalPickupFolder txtMailUsername txtMailDomain "
            "txtMailPassword txtSenderEmail txtDefaultDomain txtConnectionTimeout"),
      "two.example|587||bob|DOM||a@two|two|0");
  Choose("cmbMailServer", 2);
  EXPECT_EQ(Chosen(), "");  // unknown words choose no option
  Choose("cmbMailServer", 0);
  EXPECT_EQ(Chosen() + Text("txtMailDomain"), "RemoteMailServer Anonymous ");
  EXPECT_FALSE(IsModified());
  SaveSuccessfully();
  EXPECT_EQ(IniBytes(), ini);
}

TEST_F(Mail, WritesEachControlUnderItsKey) {
  const struct {
    const char *sendMethod, *login, *control, *keys;  // without keys: a click
    std::string line, newLine;
  } cases[] = {
      {"2", "0", "optLocalMailServer", "", "SendMethod=2", "SendMethod=1"},
      {"1", "0", "optRemoteMailServer", "", "SendMethod=1", "SendMethod=2"},
      {"2", "2", "optAnonymous", "", "AuthenticationMethod=2", "AuthenticationMethod=0"},
      {"2", "0", "optBasic", "", "AuthenticationMethod=0", "AuthenticationMethod=1"},
      {"2", "1", "optNTLM", "", "AuthenticationMethod=1", "AuthenticationMethod=2"},
      {"2", "0", "txtRemoteServerName", "mx=1;x", "ServerName=host", "ServerName=mx=1;x"},
      {"2", "0", "txtRemoteServerPort", "465", "ServerPort=25", "ServerPort=465"},
      {"1", "0", "txtLocalPickupFolder", "/", "PickupFolder=" + program, "PickupFolder=/"},
      {"2", "1", "txtMailUsername", "eve", "Username=DOM\\bob", "Username=eve"},
      {"2", "1", "txtMailPassword", "n=w", "", ""},
      {"2", "0", "txtSenderEmail", "it's@c", "SenderEmail=a@b", "SenderEmail=it's@c"},
      {"2", "0", "txtDefaultDomain", "e", "DefaultDomain=d", "DefaultDomain=e"},
      {"2", "0", "txtConnectionTimeout", "0", "Timeout=30", "Timeout=0"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.newLine);
    const std::string ini = Server(row.sendMethod, row.login) + Replaced(kSql, "=one", "=base");
    ASSERT_TRUE(Start(ini));
    *row.keys == '\0' ? Click(row.control) : Replace(row.control, row.keys);
    EXPECT_TRUE(IsModified());
    SaveSuccessfully();
    if (row.line.empty()) {
      EXPECT_EQ(Stored("MAIL:base", "Password"), row.keys);
    } else {
      EXPECT_EQ(IniBytes(), Replaced(ini, row.line + "\r\n", row.newLine + "\r\n"));
    }
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
  EXPECT_EQ(Chosen(), "RemoteMailServer Anonymous ");
}

TEST_F(Mail, NumericBoxesRefuseTheKeyThatMakesNoNumber) {
  // Typed into the cleared box, left in it, and how many keys are refused.
  const std::tuple<const char*, const char*, int> cases[] = {
      {"465", "465", 0}, {"2a5", "25", 1}, {"-1", "1", 1},   {"1,000", "1,000", 0},
      {"5.", "5.", 0},   {" 7", "7", 1},   {"0x1", "01", 1}, {"1e5", "15", 1}};
  const std::string timeout = "Connection Timeout must be a number.";
  for (const auto& [box, key, refusal] :
       {std::tuple{"txtRemoteServerPort", "RemoteServerPort",
                   std::string("Remote Server Port must be a number. The most commom value is 25.")},
        {"txtConnectionTimeout", "ConnectionTimeout", timeout}})
    for (const auto& [keys, left, refusals] : cases) {
      SCOPED_TRACE(keys);
      ASSERT_TRUE(Start(kUsual));
      for (int count = 0; count < refusals; ++count) messages.WillShow(Plain(refusal, "Data Type Error"));
      Replace(box, keys);
      messages.ExpectNoMore();
      EXPECT_EQ(Text(box), left);
      EXPECT_EQ(FocusName(), box);
      SaveSuccessfully();
      EXPECT_EQ(Stored("MAIL:one", key), left);
    }
  ASSERT_TRUE(Start(kUsual));
  messages.WillShow(Plain(timeout, "Data Type Error"));
  Paste("txtConnectionTimeout", "1 minute");
  EXPECT_EQ(Text("txtConnectionTimeout"), "30");
  EXPECT_FALSE(IsModified());
}

TEST_F(Mail, UserNamesOfTheLogins) {
  const struct {
    const char *login, *stored, *user, *domain, *typedUser, *typedDomain, *result;
  } cases[] = {
      {"2", "DOM\\bob", "bob", "DOM", "eve", "CORP", "CORP\\eve"},
      {"2", "DOM\\bob", "bob", "DOM", "eve", "", "DOM\\eve"},
      {"2", "bob", "bob", "", "", "D", "D\\bob"},
      {"2", "\\bob", "bob", "", "eve", "", "\\eve"},
      {"2", "D\\b\\c", "b", "D", "", "", "D\\b\\c"},  // showing stores nothing
      {"1", "D\\b", "D\\b", "", "", "", "D\\b"},
      {"1", "b", "b", "", "D\\e", "", "D\\e"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.stored);
    ASSERT_TRUE(
        Start(Replaced(Server("2", row.login), "DOM\\bob", row.stored) + Replaced(kSql, "=one", "=base")));
    EXPECT_EQ(Texts("txtMailUsername txtMailDomain"), std::string(row.user) + "|" + row.domain);
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
  AddRefused("oNE", "Duplicate Name", "A server with this name already exists");
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one"}));
  EXPECT_FALSE(IsModified());
  Add("DB1");  // an instance of that name is no server
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"DB1", "one"}));
  EXPECT_EQ(Text("cmbMailServer"), "DB1");
  EXPECT_EQ(FocusName(), "txtSenderEmail");
  messages.WillShow(Faulty("DB1", "- Sender's email must be provided\r\n"));
  Click("btnAddNewMailServer");  // not before this one is valid
  Replace("txtSenderEmail", "a@b");
  SaveSuccessfully();
  EXPECT_EQ(IniBytes(), ini +
                            "[MAIL:DB1]\r\nAuthenticationMethod=0\r\nSendMethod=2\r\n"
                            "RemoteServerName=DB1\r\nRemoteServerPort=25\r\nConnectionTimeout=30\r\n"
                            "SenderEmail=a@b\r\n");
}

TEST_F(Mail, RefusesNamesThatTheFileCannotHold) {
  ASSERT_TRUE(Start(kMailOne + kSql));
  for (const char* name : {"a:b", "a]", "a|b", "a\nb", "\x7F"})
    AddRefused(name, "Invalid Name",
               "A name cannot hold a colon, a closing bracket, a vertical bar or a control character.");
  for (const char* name : {" a", "a "})
    AddRefused(name, "Invalid Name", "A name cannot begin or end with a blank.");
  AddRefused("\xCE\xA9", "Invalid Name",
             "The name holds a character that Pellorin.ini cannot hold (it is outside code page 1252).");
  AddRefused(std::string(201, 'a'), "Invalid Name", "A name cannot be longer than 200 characters.");
  EXPECT_FALSE(IsModified());
}

TEST_F(Mail, DeletesUnusedServers) {
  ASSERT_TRUE(Start(kMailTwo + kMailOne));
  Delete("two", Answer::No);
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"two", "one"}));
  Replace("txtSenderEmail", "");  // an invalid one can be deleted all the same
  Delete("two");
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one"}));
  EXPECT_EQ(Text("txtSenderEmail"), "a@one");
  Delete("one");  // the last one leaves only Add
  EXPECT_EQ(OnOf("cmbMailServer txtSenderEmail btnDeleteMailSettings btnTestMailServer optAnonymous "
                 "txtRemoteServerName Label23 btnAddNewMailServer btnSave"),
            "btnAddNewMailServer btnSave");
  EXPECT_EQ(Chosen() + Text("txtSenderEmail") + Text("txtRemoteServerPort") + Text("cmbMailServer"), "");
  Add("two");  // the name is free again
  EXPECT_TRUE(IsOn("txtRemoteServerPort") && !IsOn("txtMailUsername"));
  Type("x@two");
  SaveSuccessfully();
  EXPECT_EQ(Stored("MAIL:two", "SenderEmail") + Stored("MAIL:one", "SenderEmail"),
            "x@twono section MAIL:one");
}

TEST_F(Mail, KeepsServersThatAreInUse) {
  ASSERT_TRUE(Start(kMailOne + "[SQL:A]\r\nDefaultFormat=Text\r\nPrimaryMailServer="
                               "one\r\nSecondaryMailServer=one\r\n[SQL:B]\r\nPrimaryMailServer=two\r\n"
                               "SecondaryMailServer=one\r\n[SQL:C]\r\nPrimaryMailServer=One\r\n"));
  messages.WillShow(
      Plain("Cannot remove settings for this server because it's used for:\r\n"
            "- Primary mail server for SQL Server A\r\n"
            "- Secondary mail server for SQL Server A\r\n"
            "- Secondary mail server for SQL Server B"));
  Click("btnDeleteMailSettings");
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one"}));
  EXPECT_FALSE(IsModified());
}

TEST_F(Mail, CannotLeaveAFaultyServerByKeyboardEither) {
  ASSERT_TRUE(Start(kUsual));
  Click("optLocalMailServer");
  Replace("txtLocalPickupFolder", "/no/such");
  Find("cmbMailServer").setFocus();
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_T}) {
    messages.WillShow(Faulty("one", "- Local Pickup Folder does not exist\r\n"));
    Press(key);
    EXPECT_EQ(Text("cmbMailServer") + Text("txtLocalPickupFolder"), "one/no/such");
  }
  Choose("cmbMailServer", 0);  // the same again: no check
  Click("optRemoteMailServer");
  Choose("cmbMailServer", 1);
  EXPECT_EQ(Text("cmbMailServer") + Text("txtRemoteServerName"), "twotwo.example");
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
                   "nothing", "MAIL:one"));
  EXPECT_EQ(IniBytes(), before);
}

}  // namespace
}  // namespace pellorin::test
