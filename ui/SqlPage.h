// The page "Sql Servers": the configured instances and the database that each one's procedure is installed
// in.
#pragma once

#include <memory>

#include "ui/ControlBinding.h"
#include "ui/SectionPage.h"

namespace Ui {
class frmSql;
}

namespace pellorin {

class SqlPage : public SectionPage {
  Q_OBJECT

 public:
  SqlPage(ConfigurationSession& session, UserMessages& messages, const ControlTags& tags);
  ~SqlPage() override;

  void StartBrandNew() override;
  bool ShowsConfiguredDatabase() const;  // whether the shown instance's procedure is installed anywhere

 protected:
  void ShowCurrent() override;
  bool ValidateShown() override { return true; }  // nothing can be edited yet

 private:
  std::unique_ptr<Ui::frmSql> ui_;
  ControlBinding binding_;
};

}  // namespace pellorin
