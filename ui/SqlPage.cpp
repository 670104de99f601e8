#include "ui/SqlPage.h"

#include "ui_SqlPage.h"

namespace pellorin {
namespace {

const QString kNoDatabase = QStringLiteral("None");

}  // namespace

SqlPage::SqlPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags)
    : SectionPage(SectionType::Sql, session, messages, tags),
      ui_(std::make_unique<Ui::frmSql>()),
      binding_(messages) {
  ui_->setupUi(this);
  UseSelector(*ui_->cmbSQLServer);
  binding_.OnChoice(ui_->cmbSQLServer, [this] { ShowSelected(); });
}

SqlPage::~SqlPage() = default;

void SqlPage::ShowCurrent() {
  const Section* section = session_.CurrentSql();
  const std::string database = section->GetValue("ConfiguredDB");
  ui_->lblConfiguredDB->setText(
      database.empty()
          ? kNoDatabase
          : QString::fromStdString(database + " (" + section->GetValue("AccessType") + " access) "));
}

void SqlPage::StartBrandNew() {
  SectionPage::StartBrandNew();
  ui_->lblConfiguredDB->setText(kNoDatabase);
}

bool SqlPage::ShowsConfiguredDatabase() const {
  return ui_->lblConfiguredDB->text() != kNoDatabase;
}

}  // namespace pellorin
