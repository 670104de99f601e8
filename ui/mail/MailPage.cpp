#include "ui/mail/MailPage.h"

#include <algorithm>

#include "config/SectionNames.h"
#include "config/SettingKeys.h"
#include "config/ValueOrDefault.h"
#include "ui_MailPage.h"

namespace pellorin {

MailPage::MailPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags)
    : SectionPage(SectionType::Mail, session, messages, tags),
      ui_(std::make_unique<Ui::frmMail>()),
      binding_(messages,
               {.section = [this] { return session_.CurrentMail(); },
                .persist = [this](const std::string& key,
                                  const std::string& value) { session_.PersistMailSetting(key, value); },
                .refill = [this] { Fill(); }}) {
  ui_->setupUi(this);
  UseSelector(*ui_->cmbMailServer);
  BindControls();
}

MailPage::~MailPage() = default;

void MailPage::BindControls() {
  options_ = {{ui_->optLocalMailServer, MailKey::kSendMethod, "1", ui_->txtLocalPickupFolder},
              {ui_->optRemoteMailServer, MailKey::kSendMethod, "2", nullptr},
              {ui_->optAnonymous, MailKey::kAuthenticationMethod, "0", nullptr},
              {ui_->optBasic, MailKey::kAuthenticationMethod, "1", ui_->txtMailUsername},
              {ui_->optNTLM, MailKey::kAuthenticationMethod, "2", ui_->txtMailUsername}};
  texts_ = {{ui_->txtRemoteServerName, MailKey::kRemoteServerName},
            {ui_->txtLocalPickupFolder, MailKey::kLocalMailPickupFolder},
            {ui_->txtMailPassword, MailKey::kPassword},
            {ui_->txtSenderEmail, MailKey::kSenderEmail},
            {ui_->txtDefaultDomain, MailKey::kDefaultDomain}};
  numbers_ = {
      {ui_->txtRemoteServerPort, MailKey::kRemoteServerPort,
       "Remote Server Port must be a number. The most commom value is 25."},
      {ui_->txtConnectionTimeout, MailKey::kConnectionTimeout, "Connection Timeout must be a number."}};

  for (const OptionRow& option : options_)
    binding_.OnClick(option.button, [this, &option] {
      Choose(option);
      if (option.focus != nullptr && isVisible()) option.focus->setFocus();
    });
  for (const TextRow& row : texts_) binding_.Bind(row);
  for (const NumberRow& row : numbers_) binding_.Bind(row);
  for (QLineEdit* part : {ui_->txtMailUsername, ui_->txtMailDomain}) {
    binding_.AddField(MailKey::kUsername, part);
    binding_.OnEdit(part, [this] { PersistUsername(); });
  }
  binding_.OnChoice(ui_->cmbMailServer, [this] { ShowSelected(); });
  binding_.OnClick(ui_->btnAddNewMailServer, [this] { btnAddNewMailServer_Click(); });
  binding_.OnClick(ui_->btnDeleteMailSettings, [this] { btnDeleteMailSettings_Click(); });
  binding_.OnClick(ui_->btnTestMailServer, [this] { emit probeRequested(); });
}

void MailPage::Fill() {
  const Section* section = session_.CurrentMail();
  if (section == nullptr) return;
  const auto quiet = binding_.KeepQuiet();
  FillOptions(*section);
  for (const TextRow& row : texts_) ShowValue(*row.control, *section, row.key);
  for (const NumberRow& row : numbers_) ShowValue(*row.control, *section, row.key);
  FillUsername(*section);
}

void MailPage::FillOptions(const Section& section) {
  Enable();  // the groups of the server shown before must not linger
  bool hasMethod = false;
  for (const OptionRow& option : options_) {
    const bool isLogin = std::string_view(option.key) == MailKey::kAuthenticationMethod;
    const std::string stored = section.GetValue(option.key);
    const bool isChosen = (isLogin && stored.empty() ? "0" : stored) == option.value;
    SetChosen(*option.button, isChosen);  // an unknown value chooses no option of its pair
    if (isChosen) tags_.ToggleControls(ControlTags::TagOf(*option.button));
    hasMethod = hasMethod || (isLogin && isChosen);
  }
  // Without a known method there is no form in which a user name could be stored.
  if (!hasMethod) tags_.ToggleControls(ControlTags::TagOf(*ui_->optAnonymous));
}

// A basic login's user name is shown as it is stored, also one with a domain: typing stores the box as a
// whole.
void MailPage::FillUsername(const Section& section) {
  const std::string username = section.GetValue(MailKey::kUsername);
  const std::size_t backslash = username.find('\\');
  const bool hasDomain = backslash != std::string::npos && !ui_->optBasic->isChecked();
  const std::string rest = hasDomain ? username.substr(backslash + 1) : username;
  const std::string user = hasDomain ? rest.substr(0, rest.find('\\')) : rest;
  ui_->txtMailDomain->setText(QString::fromStdString(hasDomain ? username.substr(0, backslash) : ""));
  ui_->txtMailUsername->setText(QString::fromStdString(user));
}

void MailPage::Choose(const OptionRow& option) {
  option.button->setChecked(true);
  tags_.ToggleControls(ControlTags::TagOf(*option.button));
  binding_.Persist(option.key, option.value);
  const auto quiet = binding_.KeepQuiet();
  FillUsername(*session_.CurrentMail());
}

void MailPage::PersistUsername() {
  const std::string user = TextOf(*ui_->txtMailUsername);
  if (ui_->optBasic->isChecked()) binding_.Persist(MailKey::kUsername, user);
  if (ui_->optNTLM->isChecked())
    binding_.Persist(MailKey::kUsername, TextOf(*ui_->txtMailDomain) + "\\" + user);
}

bool MailPage::ValidateMail() {
  return ValidateCurrent("sever");
}

bool MailPage::IsDuplicate(const std::string& name) const {
  const auto& sections = session_.Document()->Sections();
  return std::any_of(sections.begin(), sections.end(), [wanted = "MAIL:" + name](const auto& section) {
    return EqualIgnoringCase(section->Name, wanted);
  });
}

void MailPage::btnAddNewMailServer_Click() {
  if (!CanAdd()) return;
  const std::string name =
      messages_.AskForText("New Mail Server", "Please enter the name of the new mail server");
  if (name.empty()) return;
  if (const std::string problem = NameProblem(name); !problem.empty()) {
    messages_.Show({.text = problem, .title = "Invalid Name", .icon = MessageIcon::Exclamation});
    return;
  }
  if (IsDuplicate(name)) {
    messages_.Show({.text = "A server with this name already exists",
                    .title = "Duplicate Name",
                    .icon = MessageIcon::Exclamation});
    return;
  }
  AddNewMailServer(name);
}

void MailPage::AddNewMailServer(const std::string& name) {
  Section& section = session_.Document()->Add("MAIL:" + name, SectionType::Mail);
  session_.SetCurrent(SectionType::Mail, &section);
  Selector().InsertFirst(section);
  Enable();
  tags_.ToggleSection("Main", true);
  ShowFirst();
  for (const QRadioButton* initial : {ui_->optAnonymous, ui_->optRemoteMailServer})
    for (const OptionRow& option : options_)
      if (option.button == initial) Choose(option);
  ui_->txtRemoteServerName->setText(QString::fromStdString(name));
  ui_->txtRemoteServerPort->setText(QStringLiteral("25"));
  ui_->txtConnectionTimeout->setText(QStringLiteral("30"));
  ui_->txtSenderEmail->setFocus();
  emit session_.mailServersChanged();
}

std::string MailPage::UsesOf(const std::string& name) const {
  std::string lines;
  const auto addLine = [&](const char* role, const Section& section) {
    lines += (lines.empty() ? "- " : "\r\n- ") + std::string(role) + " mail server for SQL Server " +
             section.DisplayName();
  };
  for (const auto& section : session_.Document()->Sections()) {
    if (section->SectionType != SectionType::Sql || section->IsDeleted()) continue;
    if (name.empty()) continue;  // a setting that is not there uses no server
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
