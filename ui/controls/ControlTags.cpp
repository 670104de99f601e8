#include "ui/controls/ControlTags.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPalette>
#include <QSignalBlocker>
#include <QVariant>

#include "ui/controls/ControlValues.h"
#include "ui/controls/DateTimePicker.h"
#include "ui/controls/QTag.h"

namespace pellorin {
namespace {

bool IsField(const QWidget& control) {
  return qobject_cast<const QLineEdit*>(&control) != nullptr ||
         qobject_cast<const QComboBox*>(&control) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(&control) != nullptr ||
         qobject_cast<const QListWidget*>(&control) != nullptr;
}

void Clear(QWidget& control) {
  if (auto* button = qobject_cast<QAbstractButton*>(&control); button && button->isCheckable()) {
    SetChosen(*button, false);  // its handler runs on clicks only
    return;
  }
  const QSignalBlocker blocker(control);
  if (auto* text = qobject_cast<QLineEdit*>(&control))
    text->clear();
  else if (auto* dropDown = qobject_cast<QComboBox*>(&control))
    dropDown->setCurrentIndex(-1);
  else if (auto* list = qobject_cast<QListWidget*>(&control))
    list->clear();
  else if (auto* picker = qobject_cast<DateTimePicker*>(&control))
    picker->SetValueText({});
}

template <typename Action>
void ForEachTagged(QWidget& window, Action action) {
  for (QWidget* control : window.findChildren<QWidget*>()) {
    const std::string tag = ControlTags::TagOf(*control);
    if (!tag.empty()) action(*control, QTag(tag));
  }
}

}  // namespace

// An enabled field looks like paper. A disabled one, however it was disabled, looks like the window around
// it, with muted text. The style paints drop-down lists with the button colours, so those are set too.
void ControlTags::Switch(QWidget& control, bool on) {
  control.setEnabled(on);
  if (!IsField(control)) return;
  const QPalette window = control.window()->palette();
  QPalette palette = window;
  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const bool isPaper = on && group != QPalette::Disabled;
    const QColor background = window.color(QPalette::Active, isPaper ? QPalette::Base : QPalette::Button);
    const QColor text = isPaper ? window.color(QPalette::Active, QPalette::ButtonText)
                                : window.color(QPalette::Disabled, QPalette::Text);
    for (const auto role : {QPalette::Base, QPalette::Button}) palette.setColor(group, role, background);
    for (const auto role : {QPalette::Text, QPalette::ButtonText}) palette.setColor(group, role, text);
  }
  control.setPalette(palette);
}

std::string ControlTags::TagOf(const QWidget& control) {
  return control.property("tag").toString().toStdString();
}

QPalette ControlTags::WithReadableDisabledText(QPalette palette) {
  const QColor text = palette.color(QPalette::Active, QPalette::Text);
  const QColor ground = palette.color(QPalette::Active, QPalette::Button);
  const auto between = [](int dark, int light) { return (dark + light) / 2; };
  const QColor muted(between(text.red(), ground.red()), between(text.green(), ground.green()),
                     between(text.blue(), ground.blue()));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, muted);
  return palette;
}

void ControlTags::ToggleSection(std::string_view sectionKind, bool on) const {
  ForEachTagged(window_, [&](QWidget& control, const QTag& tag) {
    if (tag.IsInSection(sectionKind) && !tag.IsOnGroup("AlwaysOn")) Switch(control, on);
  });
}

void ControlTags::ToggleControls(std::string_view switchTag) const {
  const QTag chosen(switchTag);
  ForEachTagged(window_, [&](QWidget& control, const QTag& tag) {
    for (const std::string& group : chosen.OnGroups())
      if (tag.IsInGroup(group)) Switch(control, true);
    for (const std::string& group : chosen.OffGroups())
      if (tag.IsInGroup(group)) Switch(control, false);
  });
}

void ControlTags::StartBrandNew(std::string_view sectionKind) const {
  ForEachTagged(window_, [&](QWidget& control, const QTag& tag) {
    if (!tag.IsInSection(sectionKind) || tag.IsOnGroup("AlwaysOn")) return;
    Clear(control);
    control.setEnabled(false);
  });
}

}  // namespace pellorin
