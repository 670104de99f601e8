#include "ui/dialogs/frmRegEx.h"

#include <QComboBox>
#include <QPushButton>
#include <QShortcut>
#include <utility>

#include "dialogs/ui_frmRegEx.h"
#include "ui/controls/ControlValues.h"
#include "ui/controls/InputHabits.h"
#include "ui/controls/OffReason.h"

namespace pellorin {

frmRegEx::frmRegEx(QWidget* owner, std::function<void(QWidget&)> showHelp)
    : QDialog(owner), ui_(std::make_unique<Ui::frmRegEx>()) {
  ui_->setupUi(this);
  constexpr int kLettersInSight = 45;
  ui_->txtValue->setMinimumWidth(kLettersInSight * fontMetrics().averageCharWidth());
  ui_->cmbField->setCompleter(nullptr);  // a field is stored as typed, not completed
  ApplyInputHabits(*this);
  ExplainWhatIsOff(*this);
  connect(ui_->cmbField, &QComboBox::editTextChanged, this, [this] { ToggleOk(); });
  connect(ui_->btnOK, &QPushButton::clicked, this, [this] { Close("Save"); });
  connect(ui_->btnCancel, &QPushButton::clicked, this, [this] { Close("Cancel"); });
  connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this,
          [this, showHelp = std::move(showHelp)] { showHelp(*this); });
  ToggleOk();
}

frmRegEx::~frmRegEx() = default;

void frmRegEx::AddFields(const std::string& fields) {
  ui_->cmbField->addItems(QString::fromStdString(fields).split(QLatin1Char(',')));
  ui_->cmbField->setCurrentIndex(-1);  // else the first item would be chosen
}

std::string frmRegEx::Field() const {
  return TextOf(*ui_->cmbField);
}

void frmRegEx::SetField(const std::string& field) {
  ui_->cmbField->setEditText(QString::fromStdString(field));
}

std::string frmRegEx::Value() const {
  return TextOf(*ui_->txtValue);
}

void frmRegEx::SetValue(const std::string& value) {
  SetText(*ui_->txtValue, value);
}

void frmRegEx::ToggleOk() {
  ui_->btnOK->setEnabled(!Field().empty());
}

void frmRegEx::Close(const std::string& result) {
  dialogResult_ = result;
  hide();
}

}  // namespace pellorin
