// The dialog "Filter": one line of a queue's filter, made of a field of the mail and a regular expression.
// Takes both as they are typed. The expression is not checked: its dialect is the service's.
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
  frmRegEx(QWidget* owner, std::function<void(QWidget& owner)> showHelp);  // shown by F1
  ~frmRegEx() override;

  void AddFields(const std::string& fields);  // names separated by ","
  std::string Field() const;
  void SetField(const std::string& field);
  std::string Value() const;
  void SetValue(const std::string& value);
  // "Save" after OK, "Cancel" after Cancel, empty after any other way of closing.
  const std::string& DialogResult() const { return dialogResult_; }

 private:
  void ToggleOk();
  void Close(const std::string& result);

  std::unique_ptr<Ui::frmRegEx> ui_;
  std::string dialogResult_;
};

}  // namespace pellorin
