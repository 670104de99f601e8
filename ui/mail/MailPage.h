// The page "Mail Servers": shows one mail server at a time and writes each change of a control into its
// section at once. Showing a server stores nothing. A server with invalid settings cannot be left, one that a
// SQL Server instance uses cannot be deleted.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ui/pages/ControlBinding.h"
#include "ui/pages/SectionPage.h"

namespace Ui {
class frmMail;
}

namespace pellorin {

class MailPage : public SectionPage {
  Q_OBJECT

 public:
  MailPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags);
  ~MailPage() override;

  void AddNewMailServer(const std::string& name);
  bool ValidateMail();  // reports what is invalid; true when no server is shown

 protected:
  ControlBinding& Binding() override { return binding_; }
  void ShowCurrent() override { Fill(); }
  bool ValidateShown() override { return ValidateMail(); }

 private:
  void BindControls();
  void Fill();
  void FillOptions(const Section& section);
  void FillUsername(const Section& section);
  void Choose(const OptionRow& option);  // as the user would, but for the focus
  void PersistUsername();
  bool IsDuplicate(const std::string& name) const;
  std::string UsesOf(const std::string& name) const;

  void btnAddNewMailServer_Click();
  void btnDeleteMailSettings_Click();

  std::unique_ptr<Ui::frmMail> ui_;
  ControlBinding binding_;
  std::vector<OptionRow> options_;
  std::vector<TextRow> texts_;
  std::vector<NumberRow> numbers_;
};

}  // namespace pellorin
