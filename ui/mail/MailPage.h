// The page "Mail Servers": shows one mail server at a time and stores each edit at once. Showing a
// server stores nothing. A server with invalid settings cannot be left. One that a SQL Server instance
// uses cannot be deleted.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "service/MailComponent.h"
#include "ui/pages/SectionPage.h"

namespace Ui {
class MailPage;
}

namespace pellorin {

class MailPage : public SectionPage {
  Q_OBJECT

 public:
  MailPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags);
  ~MailPage() override;

  void AddNewMailServer(const std::string& name);
  void ShowConversation(const std::vector<ConversationLine>& lines);  // of a test of the shown server
  bool ValidateMail();  // reports what is invalid; true when no server is shown

 protected:
  void StartBrandNew() override;
  void Fill() override;
  bool ValidateShown() override { return ValidateMail(); }

 private:
  void AddRows();
  void BindControls();
  void FillUsername();
  void PersistUsername();
  std::string UsesOf(const std::string& name) const;

  void btnAddNewMailServer_Click();
  void btnDeleteMailSettings_Click();

  std::unique_ptr<Ui::MailPage> ui_;
  std::string testedServer_;  // key of the section; the conversation is shown with it
};

}  // namespace pellorin
