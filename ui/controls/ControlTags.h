// Enables, disables and empties the controls of a window by their tags (the dynamic property "tag"; QTag.h
// has its grammar). Text boxes, drop-down lists, list boxes and pickers also change their colours, which come
// from the application's palette. None of these operations runs a change handler.
#pragma once

#include <QPalette>
#include <QWidget>
#include <string_view>

namespace pellorin {

class ControlTags {
 public:
  explicit ControlTags(QWidget& window) : window_(window) {}

  // Switches all controls of a section kind ("Main", "Admin", "Mail", "Sql", "Queue"), except
  // those that are always on.
  void ToggleSection(std::string_view sectionKind, bool on) const;
  // Switches the groups that the tag of a chosen option names: first those to be on, then those to be off.
  void ToggleControls(std::string_view switchTag) const;
  // Disables and empties all controls of a section kind, except those that are always on.
  void StartBrandNew(std::string_view sectionKind) const;

  // Switches one control and its colours, whatever its tag.
  static void Switch(QWidget& control, bool on);

  // The palette with muted but readable texts for disabled controls: such a field still shows what is stored.
  static QPalette WithReadableDisabledText(QPalette palette);

  static std::string TagOf(const QWidget& control);

 private:
  QWidget& window_;
};

}  // namespace pellorin
