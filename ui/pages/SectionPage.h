// What the three pages have in common: a selector of sections of one kind, and a form that shows one of them.
// A page reaches the others only through the session.
#pragma once

#include <QFrame>
#include <optional>

#include "base/UserMessages.h"
#include "ui/boxes/GuardedEvents.h"
#include "ui/controls/ControlTags.h"
#include "ui/pages/ConfigurationSession.h"
#include "ui/pages/EmptyPageHint.h"
#include "ui/pages/SectionSelector.h"
#include "ui/pages/SettingsForm.h"

namespace pellorin {

class SectionPage : public QFrame {
  Q_OBJECT

 public:
  // `firstStep`: what an empty page tells its user to do.
  SectionPage(SectionType type, ConfigurationSession& session, UserMessages& messages,
              const ControlTags& tags, const QString& firstStep);

  SectionType Type() const { return type_; }
  std::string_view Kind() const { return session_.KindOf(type_).tag; }  // as the tags spell it
  SectionSelector& Selector() { return *selector_; }
  void ShowFirst();  // selects the first entry and shows its section

  // The handler of the selector: shows the section of the selected entry, unless the shown one is invalid.
  void ShowSelected();
  // After the whole document was refused: shows the section and focuses its first refused field. Stays on the
  // shown section if that was refused itself. Leaves it without a check.
  void ShowFaulty(Section& faulty);
  // Enables the page's controls, or disables and empties them.
  void Enable();
  virtual void StartBrandNew();

 signals:
  void probeRequested();  // the button Test

 protected:
  void UseSelector(QComboBox& list);
  // Fills the controls from the current section; stores nothing. A page adds what its form does not show.
  virtual void Fill();
  virtual void ShowCurrent() { Fill(); }  // a section has become current
  // Reports what is invalid in the shown section; true when none is shown.
  virtual bool ValidateShown() = 0;
  bool ValidateCurrent(const std::string& subject);  // subject: what the report calls the section
  bool CanAdd();                                     // false after a box that says why not
  // Asks whether to delete the settings of the shown server, or says why it cannot. True for Yes.
  bool ConfirmDeletionOfServer();
  void Refuse(const std::string& title, const std::string& reason) const;  // an exclamation box
  // Whether a section is being shown because it is faulty. A box has said so; no other may follow.
  bool IsLeadingToFault() const { return isLeadingToFault_; }
  // The section of the selected entry; none while nothing is loaded or selected.
  Section* Selected() const;
  // Makes a new section current, enters it first in the selector and enables the page.
  void ShowAdded(Section& section);
  // Takes the shown section out of the document and the selector and shows the first remaining one.
  void RemoveShown();

  ConfigurationSession& session_;
  UserMessages& messages_;
  const ControlTags& tags_;
  GuardedEvents events_;
  SettingsForm form_;

 private:
  bool FocusFaultyField();  // false when none is enabled

  SectionType type_;
  QString firstStep_;
  EmptyPageHint hint_{*this};
  std::optional<SectionSelector> selector_;
  bool isLeadingToFault_ = false;
};

}  // namespace pellorin
