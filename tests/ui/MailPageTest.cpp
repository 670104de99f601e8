// The page of the mail servers, by keys and clicks, read back from the saved file.
#include "ui/MailPage.h"

#include <QAbstractButton>
#include <QSignalSpy>

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
      "[mail:odd]\r\nSendMethod=9\r\nRemoteServerPort=abc\r\nAuthenticationMethod=7\r\nUsername=A\\b\\c\r\n"
      "SenderEmail= x \r\nConnectionTimeout=1\r\nUnknown=1\r\n";
  const std::string bare = "[MAIL:bare]\r\nSenderEmail=x\r\nConnectionTimeout=1\r\n";
  const std::string ini = kMailOne + kMailTwo + odd + kSql + bare;
  ASSERT_TRUE(Start(ini));
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one", "two", "odd", "bare"}));
  EXPECT_EQ(Chosen(), "RemoteMailServer Anonymous ");
  Choose("cmbMailServer", 1);
  EXPECT_EQ(Chosen(), "RemoteMailServer NTLM ");
  EXPECT_EQ(
      Texts("txtRemoteServerName txtRemoteServerPort txtLocalPickupFolder txtMailUsername txtMailDomain "
            "txtMailPassword txtSenderEmail txtDefaultDomain txtConnectionTimeout"),
      "two.example|587||bob|DOM||a@two|two|0");
  Choose("cmbMailServer", 2);
  // Unknown words choose no option; without a known login there are no boxes for one.
  EXPECT_EQ(Chosen(), "");
  EXPECT_EQ(OnOf("txtLocalPickupFolder txtRemoteServerPort txtMailUsername txtMailPassword txtMailDomain"),
            "txtLocalPickupFolder txtRemoteServerPort");
  EXPECT_EQ(Text("txtRemoteServerPort") + Text("txtMailDomain") + Text("txtMailUsername"), "abcAb");
  Choose("cmbMailServer", 3);
  EXPECT_EQ(Chosen(), "Anonymous ");
  Choose("cmbMailServer", 0);
  EXPECT_TRUE(Text("txtMailDomain").empty() && !IsOn("txtLocalPickupFolder"));
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
      {"2", "2", "txtMailUsername", "eve", "Username=DOM\\bob", "Username=DOM\\eve"},
      {"2", "2", "txtMailDomain", "CORP", "Username=DOM\\bob", "Username=CORP\\bob"},
      {"2", "1", "txtMailPassword", "n=w", "", ""},
      {"2", "0", "txtSenderEmail", "it's@c", "SenderEmail=a@b", "SenderEmail=it's@c"},
      {"2", "0", "txtDefaultDomain", "e", "DefaultDomain=d", "DefaultDomain=e"},
      {"2", "0", "txtConnectionTimeout", "0", "Timeout=30", "Timeout=0"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.newLine);
    const std::string ini = Server(row.sendMethod, row.login) + kSql;
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
  const std::string fields =
      "txtLocalPickupFolder Label16 txtRemoteServerName txtRemoteServerPort Label17 Label19 txtMailUsername "
      "txtMailPassword Label20 Label21 txtMailDomain Label22";
  const std::string local = "txtLocalPickupFolder Label16";
  const std::string remote = "txtRemoteServerName txtRemoteServerPort Label17 Label19";
  const std::string basic = " txtMailUsername txtMailPassword Label20 Label21";
  const std::string domain = " txtMailDomain Label22";
  const struct {
    const char* option;
    std::string on;
    const char* focus;
  } cases[] = {{"optLocalMailServer", local, "txtLocalPickupFolder"},
               {"optRemoteMailServer", remote, "optRemoteMailServer"},
               {"optNTLM", remote + basic + domain, "txtMailUsername"},
               {"optBasic", remote + basic, "txtMailUsername"},
               {"optAnonymous", remote, "optAnonymous"},
               {"optNTLM", remote + basic + domain, "txtMailUsername"}};
  for (const auto& row : cases) {
    Click(row.option);
    EXPECT_EQ(OnOf(fields), row.on) << row.option;
    EXPECT_EQ(FocusName(), row.focus);
  }
  EXPECT_EQ(Chosen(), "RemoteMailServer NTLM ");
}

TEST_F(Mail, NumericBoxesRefuseTheKeyThatMakesNoNumber) {
  const struct {
    const char *keys, *left, *stored;  // typed into the cleared box, left in it, and stored with it
    int refusals;
  } cases[] = {{"465", "465", "465", 0}, {"2a5", "25", "25", 1}, {"abc", "", "9", 3},
               {"-1", "1", "1", 1},      {"", "", "9", 0},       {"1,000", "1,000", "1,000", 0},
               {"5.", "5.", "5.", 0},    {" 7", "7", "7", 1},    {"7 ", "7 ", "7", 0},
               {"0x1", "01", "01", 1},   {"1e5", "15", "15", 1}};
  for (const auto& [box, key, refusal] :
       {std::tuple{"txtRemoteServerPort", "RemoteServerPort",
                   "Remote Server Port must be a number. The most commom value is 25."},
        {"txtConnectionTimeout", "ConnectionTimeout", "Connection Timeout must be a number."}})
    for (const auto& row : cases) {
      SCOPED_TRACE(row.keys);
      ASSERT_TRUE(Start(kUsual));
      for (int count = 0; count < row.refusals; ++count) messages.WillShow(Plain(refusal, "Data Type Error"));
      Replace(box, row.keys);
      messages.ExpectNoMore();
      EXPECT_EQ(Text(box), row.left);
      EXPECT_EQ(FocusName(), box);
      if (*row.left == '\0') Type("9");  // an empty text is stored, but cannot be saved
      SaveSuccessfully();
      EXPECT_EQ(Stored("MAIL:one", key), row.stored);
    }
  ASSERT_TRUE(Start(kUsual));
  messages.WillShow(Plain("Connection Timeout must be a number.", "Data Type Error"));
  Paste("txtConnectionTimeout", "1 minute");
  EXPECT_EQ(Text("txtConnectionTimeout"), "30");
  EXPECT_FALSE(IsModified());
  Paste("txtConnectionTimeout", "+4.5");
  EXPECT_EQ(Text("txtConnectionTimeout"), "+4.5");
}

TEST_F(Mail, UserNamesOfTheThreeLogins) {
  const struct {
    const char *login, *stored, *user, *domain, *typedUser, *typedDomain, *result;
  } cases[] = {
      {"2", "DOM\\bob", "bob", "DOM", "", "", "DOM\\bob"},
      {"2", "bob", "bob", "", "", "D", "D\\bob"},
      {"2", "\\bob", "bob", "", "eve", "", "\\eve"},
      {"2", "D\\", "", "D", "e", "", "D\\e"},
      {"2", "D\\b\\c", "b", "D", "", "", "D\\b\\c"},  // showing stores nothing
      {"1", "D\\b", "D\\b", "", "", "", "D\\b"},      // typing would store the box as a whole
      {"1", "D\\b", "D\\b", "", "e", "", "e"},
      {"1", "b", "b", "", "D\\e", "", "D\\e"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.stored);
    ASSERT_TRUE(Start(Replaced(Server("2", row.login), "DOM\\bob", row.stored) + kMailOne + kSql));
    EXPECT_EQ(Text("txtMailUsername"), row.user);
    EXPECT_EQ(Text("txtMailDomain"), row.domain);
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
  EXPECT_EQ(Chosen(), "RemoteMailServer Anonymous ");
  EXPECT_EQ(Text("txtRemoteServerName") + Text("txtRemoteServerPort") + Text("txtConnectionTimeout"),
            "DB12530");
  EXPECT_EQ(Text("txtDefaultDomain") + Text("txtMailUsername") + Text("txtLocalPickupFolder"), "");
  EXPECT_FALSE(IsOn("txtLocalPickupFolder") || IsOn("txtMailUsername"));
  EXPECT_EQ(FocusName(), "txtSenderEmail");
  const Message faulty = Faulty("DB1", "- Sender's email must be provided\r\n");
  messages.WillShow(faulty);
  Click("btnAddNewMailServer");  // not before this one is valid
  messages.WillShow(faulty);
  Choose("cmbMailServer", 1);
  EXPECT_EQ(Text("cmbMailServer") + Text("txtRemoteServerName"), "DB1DB1");
  Click("txtSenderEmail");
  Type("a@b");
  SaveSuccessfully();
  EXPECT_EQ(IniBytes(), ini +
                            "[MAIL:DB1]\r\nAuthenticationMethod=0\r\nSendMethod=2\r\n"
                            "RemoteServerName=DB1\r\nRemoteServerPort=25\r\nConnectionTimeout=30\r\n"
                            "SenderEmail=a@b\r\n");
}

TEST_F(Mail, RefusesNamesThatTheFileCannotHold) {
  ASSERT_TRUE(Start(kMailOne + kSql));
  const char* characters =
      "A name cannot hold a colon, a closing bracket, a vertical bar or a control character.";
  const char* blanks = "A name cannot begin or end with a blank.";
  const std::pair<std::string, std::string> cases[] = {
      {"a:b", characters},
      {"a]", characters},
      {"a|b", characters},
      {"a\nb", characters},
      {"\x7F", characters},
      {" a", blanks},
      {"a ", blanks},
      {" ", blanks},
      {"\xCE\xA9",
       "The name holds a character that Pellorin.ini cannot hold (it is outside code page 1252)."},
      {std::string(201, 'a'), "A name cannot be longer than 200 characters."}};
  for (const auto& [name, problem] : cases) AddRefused(name, "Invalid Name", problem);
  EXPECT_FALSE(IsModified());
  const std::string odd = "M\xC3\xBCller [;=\"<b>&";
  Add(odd);
  Click("txtSenderEmail");
  Type("a@b");
  SaveSuccessfully();
  ASSERT_TRUE(Start(""));
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one", odd}));
}

TEST_F(Mail, DeletesUnusedServers) {
  ASSERT_TRUE(Start(kMailTwo + kMailOne + kSql));
  Delete("two", Answer::No);
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"two", "one"}));
  Replace("txtSenderEmail", "");  // an invalid one can be deleted all the same
  Delete("two");
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"one"}));
  EXPECT_EQ(Text("txtSenderEmail"), "a@one");
  Add("two");  // the name is free again
  Type("x@two");
  Delete("two");
  EXPECT_EQ(Text("cmbMailServer"), "one");
  SaveSuccessfully();
  EXPECT_EQ(IniBytes(), "; by hand\r\n" + kMailOne + kSql) << "a comment stays";
}

TEST_F(Mail, DeletingTheLastServerLeavesOnlyAdd) {
  ASSERT_TRUE(Start(kMailOne + "[SQL:DB1]\r\nPrimaryMailServer=ONE\r\n"));  // another name
  Delete("one");
  EXPECT_EQ(OnOf("cmbMailServer txtSenderEmail btnDeleteMailSettings btnTestMailServer optAnonymous "
                 "txtRemoteServerName Label23 btnAddNewMailServer btnSave"),
            "btnAddNewMailServer btnSave");
  EXPECT_EQ(Chosen() + Text("txtSenderEmail") + Text("txtRemoteServerPort") + Text("cmbMailServer"), "");
  EXPECT_TRUE(IsModified());
  Add("next");
  EXPECT_EQ(Text("cmbMailServer") + Text("txtRemoteServerPort"), "next25");
  EXPECT_TRUE(IsOn("txtRemoteServerPort") && !IsOn("txtMailUsername"));
}

TEST_F(Mail, KeepsServersThatAreInUseOrCannotBeNamed) {
  const std::string used = kMailOne + kAdmin +
                           "PrimaryMailServer=one\r\n"
                           "[SQL:A]\r\nPrimaryMailServer=one\r\nSecondaryMailServer=one\r\n[SQL:B]\r\n"
                           "PrimaryMailServer=two\r\nSecondaryMailServer=one\r\n[SQL:C]\r\n"
                           "PrimaryMailServer=One\r\n";
  ASSERT_TRUE(Start(used));
  messages.WillShow(
      Plain("Cannot remove settings for this server because it's used for:\r\n"
            "- Primary mail server for SQL Server A\r\n"
            "- Secondary mail server for SQL Server A\r\n"
            "- Secondary mail server for SQL Server B"));
  Click("btnDeleteMailSettings");
  ASSERT_TRUE(Start(Replaced(kMailOne, "MAIL:one", "MAIL:a|b")));
  messages.WillShow(
      {.text = "The settings for server a|b cannot be deleted here, because the name holds \"|\". "
               "Please edit the section [MAIL:a|b] of this file with a text editor:\r\n" +
               IniPath(),
       .icon = MessageIcon::Exclamation});
  Click("btnDeleteMailSettings");
  EXPECT_EQ(Entries("cmbMailServer"), (Names{"a|b"}));
  EXPECT_FALSE(IsModified());
}

TEST_F(Mail, CannotLeaveAFaultyServerByKeyboardEither) {
  ASSERT_TRUE(Start(kUsual));
  Click("optLocalMailServer");
  EXPECT_EQ(FocusName(), "txtLocalPickupFolder");
  Replace("txtLocalPickupFolder", "/no/such");
  Find("cmbMailServer").setFocus();
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_T}) {
    messages.WillShow(Faulty("one", "- Local Pickup Folder does not exist\r\n"));
    Press(key);
    EXPECT_EQ(Text("cmbMailServer") + Text("txtLocalPickupFolder"), "one/no/such");
  }
  Choose("cmbMailServer", 0);  // the same again: no check
  Click("optRemoteMailServer");
  Find("cmbMailServer").setFocus();
  Press(Qt::Key_Down);
  EXPECT_EQ(Text("cmbMailServer") + Text("txtRemoteServerName"), "twotwo.example");
  EXPECT_EQ(FocusName(), "cmbMailServer");
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
      {.text = "The settings for server one cannot be deleted here, because the file holds two "
               "sections of this name. Please edit the section [MAIL:one] of this file with a text "
               "editor:\r\n" +
               IniPath(),
       .icon = MessageIcon::Exclamation});
  Click("btnDeleteMailSettings");
  const std::string before = IniBytes();
  messages.WillShow(
      {.text = "Could not save section MAIL:one\r\nThe file holds two sections of this name, and only "
               "the first can be reached. Please rename one in the file.\r\n" +
               IniPath() +
               "\r\n\r\nSaved: nothing\r\nNot saved: MAIL:one\r\n\r\nError Number: 50111\r\nError "
               "Source: PellorinConfig.exe, Section, Save",
       .icon = MessageIcon::Critical});
  Click("btnSave");
  EXPECT_EQ(IniBytes(), before);
}

TEST_F(Mail, NamesAKeyInAnotherLetterCase) {
  const std::string ini =
      Replaced(Replaced(kMailOne, "SendMethod", "sendMethod"), "RemoteServerPort", "remoteserverport") + kSql;
  ASSERT_TRUE(Start(ini));
  EXPECT_EQ(Text("txtRemoteServerPort") + Text("txtSenderEmail") + Chosen(), "a@oneAnonymous ");
  for (const auto& [control, key] :
       {std::pair{"txtRemoteServerPort", "RemoteServerPort"}, {"optLocalMailServer", "SendMethod"}}) {
    messages.WillShow(
        {.text = std::string("The setting \"") + key +
                 "\" cannot be changed: section MAIL:one holds it in another letter case. Please "
                 "correct its spelling in the file.\r\n" +
                 IniPath() + "\r\n\r\nError Number: 457\r\nError Source: PellorinConfig.exe, Collection",
         .icon = MessageIcon::Critical});
    Click(control);
    if (std::string(control) == "txtRemoteServerPort") Type("9");
    EXPECT_EQ(Text("txtRemoteServerPort") + Chosen(), "Anonymous ");
  }
  EXPECT_TRUE(IsOn("txtRemoteServerPort") && IsOn("txtLocalPickupFolder"));
  EXPECT_FALSE(IsModified());
}

TEST_F(Mail, SaysThatItSendsNoTestMailYet) {
  ASSERT_TRUE(Start(kUsual));
  messages.WillShow({.text = "This version cannot send test e-mails.", .icon = MessageIcon::Information});
  Click("btnTestMailServer");
}

TEST_F(Mail, AnnouncesAddedAndDeletedServers) {
  ConfigurationSession session;
  QWidget host;
  const ControlTags tags(host);
  auto* page = new MailPage(session, messages, tags);
  page->setParent(&host);
  session.ReplaceDocument(std::make_unique<Ini>(files, program, LocaleConventions()));
  Names announced;
  QObject::connect(&session, &ConfigurationSession::mailServersChanged, &host, [&] {
    announced.push_back(std::to_string(session.Document()->NumOfSections(SectionType::Mail)));
  });
  page->AddNewMailServer("a");
  page->AddNewMailServer("b");  // the first one, still incomplete, is not complained about
  EXPECT_EQ(session.CurrentMail()->Name, "MAIL:b");
  for (int count = 0; count < 2; ++count) {
    messages.WillShowSome(Answer::Yes);
    page->findChild<QAbstractButton*>(QStringLiteral("btnDeleteMailSettings"))->click();
  }
  EXPECT_EQ(announced, (Names{"1", "2", "1", "0"}));
  EXPECT_EQ(session.CurrentMail(), nullptr);
}

}  // namespace
}  // namespace pellorin::test
