#include "ui/pages/ControlBinding.h"

#include <QAbstractSpinBox>
#include <QEvent>
#include <algorithm>
#include <limits>
#include <set>
#include <utility>

#include "config/Ini.h"
#include "config/NumericText.h"
#include "ui/boxes/FailureMessage.h"

namespace pellorin {

ControlBinding::ControlBinding(UserMessages& messages, Target target)
    : messages_(messages), target_(std::move(target)) {}

void ControlBinding::Run(const Handler& handler) {
  if (quietDepth_ == 0) RunGuarded(messages_, handler);
}

void ControlBinding::OnClick(QAbstractButton* button, Handler handler) {
  QObject::connect(button, &QAbstractButton::clicked, button,
                   [this, handler = std::move(handler)] { Run(handler); });
}

void ControlBinding::OnChoice(QComboBox* list, Handler handler) {
  QObject::connect(list, &QComboBox::activated, list, [this, handler = std::move(handler)] { Run(handler); });
}

void ControlBinding::OnEdit(QLineEdit* text, Handler handler) {
  QObject::connect(text, &QLineEdit::textChanged, text,
                   [this, handler = std::move(handler)] { Run(handler); });
}

void ControlBinding::OnEdit(DateTimePicker* picker, Handler handler) {
  QObject::connect(picker, &DateTimePicker::edited, picker,
                   [this, handler = std::move(handler)] { Run(handler); });
}

void ControlBinding::OnSelection(QListWidget* list, Handler handler) {
  QObject::connect(list, &QListWidget::itemSelectionChanged, list,
                   [this, handler = std::move(handler)] { Run(handler); });
}

void ControlBinding::Bind(const TextRow& row) {
  AddField(row.key, row.control);
  OnEdit(row.control, [this, row] { Persist(row.key, TextOf(*row.control)); });
}

void ControlBinding::Bind(const NumberRow& row) {
  AddField(row.key, row.control);
  OnEdit(row.control, [this, row] { EditNumber(row); });
}

void ControlBinding::EditNumber(const NumberRow& row) {
  const Section* section = target_.section();
  const std::string text = TextOf(*row.control);
  if (section == nullptr || text.empty() || IsNumber(text, section->Owner->Locale())) {
    Persist(row.key, text);
    return;
  }
  messages_.Show({.text = row.refusal, .title = "Data Type Error"});
  const Quiet quiet = KeepQuiet();
  ShowValue(*row.control, *section, row.key);
  row.control->setFocus();
}

void ControlBinding::Persist(const std::string& key, const std::string& value) {
  try {
    target_.persist(key, value);
  } catch (const NumberedError&) {
    target_.refill();
    throw;
  }
}

// Of several fields that are on an empty one, which lacks what the setting needs.
QWidget* ControlBinding::FieldOf(const std::string& key) const {
  QWidget* field = nullptr;
  const auto [first, last] = fields_.equal_range(key);
  for (auto place = first; place != last; ++place) {
    if (!place->second->isEnabled()) continue;
    const auto* text = qobject_cast<const QLineEdit*>(place->second);
    if (text != nullptr && text->text().isEmpty()) return place->second;
    if (field == nullptr) field = place->second;
  }
  return field;
}

bool ControlBinding::FocusFirst(const std::vector<std::string>& keys, QWidget& start) const {
  std::set<const QWidget*> fields;
  for (const std::string& key : keys)
    if (const QWidget* field = FieldOf(key)) fields.insert(field);
  if (fields.empty()) return false;
  QWidget* control = &start;
  while (!fields.contains(control)) control = control->nextInFocusChain();
  control->setFocus(Qt::TabFocusReason);  // as by Tab: what stands there is selected
  return true;
}

void SetChosen(QRadioButton& option, bool isChosen) {
  option.setAutoExclusive(false);  // else the last chosen one of a group cannot be cleared
  option.setChecked(isChosen);
  option.setAutoExclusive(true);
}

namespace {

class WheelFilter : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* control = qobject_cast<QWidget*>(watched);
    if (event->type() != QEvent::Wheel || control == nullptr || control->hasFocus()) return false;
    event->ignore();
    return true;
  }
};

}  // namespace

void AllowAnyLength(QWidget& window) {
  for (QLineEdit* text : window.findChildren<QLineEdit*>())
    text->setMaxLength(std::numeric_limits<int>::max());
}

void IgnoreWheelWithoutFocus(QWidget& window) {
  auto* filter = new WheelFilter(&window);
  const auto watch = [filter](QWidget* control) {
    control->setFocusPolicy(Qt::StrongFocus);
    control->installEventFilter(filter);
  };
  for (QComboBox* list : window.findChildren<QComboBox*>()) watch(list);
  for (QAbstractSpinBox* picker : window.findChildren<QAbstractSpinBox*>()) watch(picker);
}

void LeadTabToChosenOptions(QWidget& window) {
  for (QRadioButton* option : window.findChildren<QRadioButton*>())
    QObject::connect(option, &QRadioButton::toggled, option, [option] {
      const auto group =
          option->parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
      const bool isAnyChosen = std::ranges::any_of(group, &QRadioButton::isChecked);
      for (QRadioButton* each : group)
        each->setFocusPolicy(each->isChecked() || !isAnyChosen ? Qt::StrongFocus : Qt::ClickFocus);
    });
}

}  // namespace pellorin
