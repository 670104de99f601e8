// Enabling, disabling and emptying the controls of a window by their tags (the dynamic property "tag", see
// QTag). Text boxes, drop-down lists, list boxes and pickers also change their colours, taken from the
// application's palette. None of these operations runs a change handler.
#pragma once

#include <QPalette>
#include <QWidget>
#include <string_view>

namespace pellorin {

class ControlTags {
 public:
  explicit ControlTags(QWidget& window) : window_(window) {}

  // Every control of a section kind ("Main", "Admin", "Mail", "Sql", "Queue") but those that are always on.
  void ToggleSection(std::string_view sectionKind, bool on) const;
  // Switches on, then off, the members of the groups that the tag of a chosen option names.
  void ToggleControls(std::string_view switchTag) const;
  // Disables and empties every control of a section kind but those that are always on.
  void StartBrandNew(std::string_view sectionKind) const;

  // One control and its colours, whatever its tag.
  static void Switch(QWidget& control, bool on);

  // The palette with muted texts that can still be read: a disabled field shows what is stored.
  static QPalette WithReadableDisabledText(QPalette palette);

  static std::string TagOf(const QWidget& control);

 private:
  QWidget& window_;
};

}  // namespace pellorin
