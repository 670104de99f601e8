// The dialog "Filter": one line of a queue's filter, a field of the mail and a regular expression. Both texts
// are taken as they are typed; the expression is not checked, since its dialect is the service's.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <string>

namespace Ui {
class frmRegEx;
}

namespace pellorin {

class frmRegEx : public QDialog {
  Q_OBJECT

 public:
  frmRegEx(QWidget* owner, std::function<void(QWidget& owner)> showHelp);  // by F1
  ~frmRegEx() override;

  void AddFields(const std::string& fields);  // names separated by ","
  std::string Field() const;
  void SetField(const std::string& field);
  std::string Value() const;
  void SetValue(const std::string& value);
  // "Save" after OK, "Cancel" after Cancel, empty when closed in any other way.
  const std::string& DialogResult() const { return dialogResult_; }

 private:
  void ToggleOk();
  void Close(const std::string& result);

  std::unique_ptr<Ui::frmRegEx> ui_;
  std::string dialogResult_;
};

}  // namespace pellorin
