// Showing an instance: the controls from the settings, and what the lists offer.
#include <QSignalBlocker>

#include "base/Utf16.h"
#include "config/SettingKeys.h"
#include "config/ValueOrDefault.h"
#include "files/FileLookup.h"
#include "platform/Paths.h"
#include "ui/boxes/FailureMessage.h"
#include "ui/controls/ListItems.h"
#include "ui/sql/SqlPage.h"
#include "ui_SqlPage.h"

namespace pellorin {
namespace {

const QString kNoDatabase = QStringLiteral("None");
constexpr const char* kConnectionType = SqlKey::kConnectionType;

}  // namespace

void SqlPage::ShowCurrent() {
  RunGuarded(messages_, [this] {
    const ConfigurationSession::Edits edits(session_);
    emit loginChanged();
    Fill();
    ShowNotice();
    if (session_.CurrentSql()->CanBeWritten()) StoreShown();
  });
}

void SqlPage::Fill() {
  const Section& instance = *session_.CurrentSql();
  const auto quiet = binding_.KeepQuiet();
  FillOptions(instance);
  for (const CheckRow& row : checks_)
    row.box->setChecked(ValueOrDefault(instance.GetValue(row.key), row.defaultValue) == "1");
  for (const TextRow& row : texts_) ShowValue(*row.control, instance, row.key);
  for (const NumberRow& row : numbers_) ShowValue(*row.control, instance, row.key);
  for (const ListRow& row : lists_) SelectListItem(*row.list, instance.GetValue(row.key));
  ShowDatabase();
}

// Without a known connection type the login that was shown stays; an unknown format is text.
void SqlPage::FillOptions(const Section& instance) {
  Enable();  // the groups of the instance shown before must not linger
  const std::string connection = instance.GetValue(SqlKey::kConnectionType);
  if (connection == "Trusted") connection_ = ui_->optTrusted;
  if (connection == "Sql") connection_ = ui_->optSqlNative;
  for (QRadioButton* option : {ui_->optTrusted, ui_->optSqlNative}) SetChosen(*option, option == connection_);
  const bool isHtml = instance.GetValue(SqlKey::kDefaultFormat) == "HTML";
  (isHtml ? ui_->optHTML : ui_->optText)->setChecked(true);
  const bool isNative = ui_->optSqlNative->isChecked();
  tags_.ToggleControls(ControlTags::TagOf(isNative ? *ui_->optSqlNative : *ui_->optTrusted));
}

void SqlPage::StoreShown() {
  const Section& instance = *session_.CurrentSql();
  Steps steps;
  steps.Run([&] {
    session_.PersistSqlSetting(SqlKey::kDefaultFormat, ui_->optHTML->isChecked() ? "HTML" : "Text");
  });
  for (const ListRow& row : lists_) {
    const std::string stored = instance.GetValue(row.key);
    const std::string shown = row.list->currentText().toStdString();
    if (stored.empty()) continue;  // then nothing is selected: no empty text comes under an absent key
    steps.Run([&] {
      session_.PersistSqlSetting(row.key, shown);
      if (shown.empty()) NoteLost(row, stored);
    });
  }
  steps.RaiseFailures();
}

void SqlPage::NoteLost(const ListRow& row, const std::string& value) {
  constexpr std::size_t kLongest = 60;  // in the sentence; no line of the page may push the window wider
  lost_[session_.CurrentSql()->Key][row.key] = std::string("The ") + row.content + " \"" +
                                               Shortened(value, kLongest) +
                                               "\" is not in its list, and is not set any more.";
  ShowNotice();
}

void SqlPage::ForgetLost(const ListRow& row) {
  lost_[session_.CurrentSql()->Key].erase(row.key);
  ShowNotice();
}

void SqlPage::ShowNotice() {
  const Section* instance = session_.CurrentSql();
  std::string text;
  const auto add = [&text](const std::string& sentence) { text += (text.empty() ? "" : "\r\n") + sentence; };
  if (instance != nullptr) {
    const std::string connection = instance->GetValue(kConnectionType);
    const Setting* misspelt = instance->Settings().Find(kConnectionType);
    if (misspelt != nullptr && misspelt->Name != kConnectionType)
      add("The connection type is stored as \"" + misspelt->Name +
          "\". Please correct the spelling of this key in the file.");
    else if (connection.empty())
      add("No connection type is stored. Please choose one.");
    else if (connection != "Trusted" && connection != "Sql")
      add("The stored connection type is neither Trusted nor Sql. Please choose one.");
    for (const auto& [key, sentence] : lost_[instance->Key]) add(sentence);
  }
  ui_->lblSqlNotice->setText(QString::fromStdString(text));
  ui_->lblSqlNotice->setVisible(!text.empty());
  emit noticed(!text.empty());
}

void SqlPage::ShowSecurity(const std::string& note) {
  ui_->lblSqlConnection->Say(note);
}

void SqlPage::ShowDatabase() {
  const Section* instance = session_.CurrentSql();
  const std::string database =
      instance == nullptr ? std::string() : instance->GetValue(SqlKey::kConfiguredDB);
  ui_->lblConfiguredDB->setText(
      database.empty()
          ? kNoDatabase
          : QString::fromStdString(database + " (" + instance->GetValue(SqlKey::kAccessType) + " access) "));
  ui_->lblConfiguredDB->setToolTip(ui_->lblConfiguredDB->text());
}

bool SqlPage::ShowsConfiguredDatabase() const {
  return ui_->lblConfiguredDB->text() != kNoDatabase;
}

void SqlPage::StartBrandNew() {
  SectionPage::StartBrandNew();
  connection_ = nullptr;
  emit loginChanged();
  ShowDatabase();
  ShowNotice();
}

void SqlPage::LoadLists() {
  FillStylesheets();
  RefreshMailServers();
}

// A folder that is missing offers nothing.
void SqlPage::FillStylesheets() {
  const QSignalBlocker blocker(ui_->cmbStylesheet);
  ui_->cmbStylesheet->clear();
  const std::string& program = installer_.programFolder;
  const std::string folder = JoinPath(program, FindIgnoringCase(files_, program, "HTMLStylesheets"));
  if (files_.Status(folder).kind != FileKind::Folder) return;
  for (const FolderEntry& entry : files_.List(folder))
    if (!entry.isFolder && FoldCase(entry.name).ends_with(".css"))
      ui_->cmbStylesheet->addItem(QString::fromStdString(entry.name));
  ui_->cmbStylesheet->setCurrentIndex(-1);
}

void SqlPage::RefreshMailServers() {
  const Section* instance = session_.CurrentSql();
  for (const ListRow& row : lists_) {
    if (row.list != ui_->cmbPrimaryMailServer && row.list != ui_->cmbSecondaryMailServer) continue;
    FillMailServers(*row.list);
    SelectListItem(*row.list, instance == nullptr ? std::string() : instance->GetValue(row.key));
  }
}

void SqlPage::FillMailServers(QComboBox& list) {
  const QSignalBlocker blocker(list);
  list.clear();
  for (const auto& section : session_.Document()->Sections())
    if (section->SectionType == SectionType::Mail && !section->IsDeleted())
      list.addItem(QString::fromStdString(section->DisplayName()));
}

}  // namespace pellorin
