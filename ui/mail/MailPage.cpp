#include "ui/mail/MailPage.h"

#include "config/SectionNames.h"
#include "config/SettingKeys.h"
#include "mail/ui_MailPage.h"
#include "ui/controls/ControlValues.h"
#include "ui/controls/LabelColumns.h"

namespace pellorin {

MailPage::MailPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags)
    : SectionPage(SectionType::Mail, session, messages, tags,
                  QStringLiteral("No mail server yet. Press Add to enter the first one.")),
      ui_(std::make_unique<Ui::MailPage>()) {
  ui_->setupUi(this);
  AlignLabelColumns(*this);
  UseSelector(*ui_->cmbMailServer);
  AddRows();
  BindControls();
}

MailPage::~MailPage() = default;

void MailPage::AddRows() {
  form_.Add(OptionRow{
      MailKey::kSendMethod,
      {{ui_->optLocalMailServer, "1", ui_->txtLocalPickupFolder}, {ui_->optRemoteMailServer, "2"}}});
  form_.Add(OptionRow{.key = MailKey::kAuthenticationMethod,
                      .options = {{ui_->optAnonymous, "0"},
                                  {ui_->optBasic, "1", ui_->txtMailUsername},
                                  {ui_->optNTLM, "2", ui_->txtMailUsername}},
                      .valueOf = [](const std::string& stored) { return stored.empty() ? "0" : stored; },
                      // Without a known method, the form in which to store a user name is not known.
                      .whenNone = ui_->optAnonymous,
                      .onChosen = [this](const Option&) { FillUsername(); }});
  form_.Add(TextRow{ui_->txtRemoteServerName, MailKey::kRemoteServerName});
  form_.Add(TextRow{ui_->txtLocalPickupFolder, MailKey::kLocalMailPickupFolder});
  form_.Add(TextRow{ui_->txtMailPassword, MailKey::kPassword});
  form_.Add(TextRow{ui_->txtSenderEmail, MailKey::kSenderEmail});
  form_.Add(TextRow{ui_->txtDefaultDomain, MailKey::kDefaultDomain});
  form_.Add(NumberRow{ui_->txtRemoteServerPort, MailKey::kRemoteServerPort,
                      "Remote Server Port must be a number. The most commom value is 25."});
  form_.Add(NumberRow{ui_->txtConnectionTimeout, MailKey::kConnectionTimeout,
                      "Connection Timeout must be a number."});
}

void MailPage::BindControls() {
  for (QLineEdit* part : {ui_->txtMailUsername, ui_->txtMailDomain}) {
    form_.AddField(MailKey::kUsername, part);
    events_.OnEdit(part, [this] { PersistUsername(); });
  }
  events_.OnClick(ui_->btnAddNewMailServer, [this] { btnAddNewMailServer_Click(); });
  events_.OnClick(ui_->btnDeleteMailSettings, [this] { btnDeleteMailSettings_Click(); });
  connect(&session_, &ConfigurationSession::documentReplaced, this, [this] { testedServer_.clear(); });
  events_.OnClick(ui_->btnTestMailServer, [this] { emit probeRequested(); });
}

void MailPage::Fill() {
  SectionPage::Fill();
  FillUsername();
  const Section* section = session_.CurrentMail();
  ui_->fraConversation->setVisible(section != nullptr && section->Key == testedServer_);
}

void MailPage::StartBrandNew() {
  SectionPage::StartBrandNew();
  ui_->fraConversation->hide();
}

void MailPage::ShowConversation(const std::vector<ConversationLine>& lines) {
  const Section* section = session_.CurrentMail();
  if (section == nullptr || lines.empty()) return;
  testedServer_ = section->Key;
  ui_->fraConversation->Show(lines, *ui_->txtMailPassword);
  ui_->fraConversation->show();
}

// A basic login's user name is shown as it is stored, even with a domain: typing stores the whole box.
void MailPage::FillUsername() {
  const Section* section = session_.CurrentMail();
  if (section == nullptr) return;
  const auto quiet = events_.KeepQuiet();
  const std::string username = section->GetValue(MailKey::kUsername);
  const std::size_t backslash = username.find('\\');
  const bool hasDomain = backslash != std::string::npos && !ui_->optBasic->isChecked();
  const std::string rest = hasDomain ? username.substr(backslash + 1) : username;
  SetText(*ui_->txtMailDomain, hasDomain ? username.substr(0, backslash) : "");
  SetText(*ui_->txtMailUsername, hasDomain ? rest.substr(0, rest.find('\\')) : rest);
}

void MailPage::PersistUsername() {
  const std::string user = TextOf(*ui_->txtMailUsername);
  if (ui_->optBasic->isChecked()) form_.Store(MailKey::kUsername, user);
  if (ui_->optNTLM->isChecked()) form_.Store(MailKey::kUsername, TextOf(*ui_->txtMailDomain) + "\\" + user);
}

bool MailPage::ValidateMail() {
  return ValidateCurrent("sever");
}

void MailPage::btnAddNewMailServer_Click() {
  if (!CanAdd()) return;
  const std::string name =
      messages_.AskForText("New Mail Server", "Please enter the name of the new mail server", {});
  if (name.empty()) return;
  if (const std::string problem = NameProblem(name); !problem.empty())
    Refuse("Invalid Name", problem);
  else if (session_.Document()->HoldsName(SectionType::Mail, name))
    Refuse("Duplicate Name", "A server with this name already exists");
  else
    AddNewMailServer(name);
}

void MailPage::AddNewMailServer(const std::string& name) {
  ShowAdded(session_.Document()->Add("MAIL:" + name, SectionType::Mail));
  ShowFirst();
  form_.Choose(ui_->optAnonymous);
  form_.Choose(ui_->optRemoteMailServer);
  SetText(*ui_->txtRemoteServerName, name);
  SetText(*ui_->txtRemoteServerPort, "25");
  SetText(*ui_->txtConnectionTimeout, "30");
  ui_->txtSenderEmail->setFocus();
  emit session_.mailServersChanged();
}

std::string MailPage::UsesOf(const std::string& name) const {
  std::string lines;
  const auto addLine = [&](const char* role, const Section& section) {
    lines += (lines.empty() ? "- " : "\r\n- ") + std::string(role) + " mail server for SQL Server " +
             section.DisplayName();
  };
  if (name.empty()) return lines;  // a missing setting uses no server
  for (const Section* section : session_.Document()->SectionsOf(SectionType::Sql)) {
    if (section->GetValue(SqlKey::kPrimaryMailServer) == name) addLine("Primary", *section);
    if (section->GetValue(SqlKey::kSecondaryMailServer) == name) addLine("Secondary", *section);
  }
  return lines;
}

void MailPage::btnDeleteMailSettings_Click() {
  Section* section = session_.CurrentMail();
  if (section == nullptr) return;
  const std::string name = section->DisplayName();
  if (const std::string uses = UsesOf(name); !uses.empty()) {
    messages_.Show({.text = "Cannot remove settings for this server because it's used for:\r\n" + uses});
    return;
  }
  if (!ConfirmDeletionOfServer()) return;
  RemoveShown();
  emit session_.mailServersChanged();
}

}  // namespace pellorin
