// What the three pages have in common: a selector of sections of one kind, and a section that is shown. A
// page reaches the others only through the session.
#pragma once

#include <QFrame>
#include <optional>

#include "base/UserMessages.h"
#include "ui/controls/ControlTags.h"
#include "ui/pages/ConfigurationSession.h"
#include "ui/pages/ControlBinding.h"
#include "ui/pages/SectionSelector.h"

namespace pellorin {

class SectionPage : public QFrame {
  Q_OBJECT

 public:
  SectionPage(SectionType type, ConfigurationSession& session, UserMessages& messages,
              const ControlTags& tags);

  SectionType Type() const { return type_; }
  SectionSelector& Selector() { return *selector_; }
  void ShowFirst();  // selects the first entry and shows its section

  // The handler of the selector: shows the section of the selected entry, unless the shown one is invalid.
  void ShowSelected();
  // After the whole document was refused: shows the section and leads to its first refused field. When the
  // shown section was refused itself it stays. Checks nothing on leaving.
  void ShowFaulty(Section& faulty);
  // Enables the page's controls, or disables and empties them.
  void Enable();
  virtual void StartBrandNew();

 signals:
  void probeRequested();  // the button Test

 protected:
  void UseSelector(QComboBox& list) { selector_.emplace(list); }
  virtual ControlBinding& Binding() = 0;
  virtual void ShowCurrent() = 0;  // fills the controls from the section that has become current
  // Reports what is invalid in the shown section; true when none is shown.
  virtual bool ValidateShown() = 0;
  bool ValidateCurrent(const std::string& subject);  // subject: what the report calls the section
  bool CanAdd();                                     // says why not
  // Asks whether the settings of the shown server shall go; says why they cannot. True when the user wants
  // it.
  bool ConfirmDeletionOfServer();
  // Whether a section is being shown because it is faulty: a box has told that, and no other must follow.
  bool IsLeadingToFault() const { return isLeadingToFault_; }
  // Focuses the first field of the shown section that validation refused. False when none is on.
  bool FocusFaultyField();
  std::string_view Kind() const;  // as the tags spell it
  // The section of the selected entry; none while nothing is loaded or selected.
  Section* Selected() const;
  // Takes the shown section out of the document and the selector and shows the first remaining one.
  void RemoveShown();

  ConfigurationSession& session_;
  UserMessages& messages_;
  const ControlTags& tags_;

 private:
  SectionType type_;
  std::optional<SectionSelector> selector_;
  bool isLeadingToFault_ = false;
};

}  // namespace pellorin
