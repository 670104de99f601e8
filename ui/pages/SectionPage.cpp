#include "ui/pages/SectionPage.h"

namespace pellorin {

SectionPage::SectionPage(SectionType type, ConfigurationSession& session, UserMessages& messages,
                         const ControlTags& tags, const QString& firstStep)
    : session_(session),
      messages_(messages),
      tags_(tags),
      events_(messages),
      form_({session, type, messages, tags, events_}, [this] { Fill(); }),
      type_(type),
      firstStep_(firstStep) {
  hint_.setObjectName(QStringLiteral("hintEmpty") + QString::fromStdString(std::string(Kind())));
}

void SectionPage::UseSelector(QComboBox& list) {
  selector_.emplace(list);
  events_.OnChoice(&list, [this] { ShowSelected(); });
}

void SectionPage::Fill() {
  Enable();  // the groups of the section shown before must not linger
  form_.Fill();
}

Section* SectionPage::Selected() const {
  const Ini* document = session_.Document();
  return document == nullptr ? nullptr : selector_->Selected(*document);
}

void SectionPage::ShowFirst() {
  selector_->SelectFirst();
  ShowSelected();
}

void SectionPage::ShowSelected() {
  Section* chosen = Selected();
  if (chosen == nullptr) return;
  Section* shown = session_.Current(type_);
  if (shown != nullptr && shown != chosen && !ValidateShown()) {
    selector_->Select(*shown);
    return;
  }
  session_.SetCurrent(type_, chosen);
  ShowCurrent();
}

void SectionPage::ShowFaulty(Section& faulty) {
  const Section* shown = session_.Current(type_);
  if (shown == nullptr || shown->ValidationError().empty()) {
    selector_->Select(faulty);
    session_.SetCurrent(type_, &faulty);
    isLeadingToFault_ = true;
    ShowCurrent();
    isLeadingToFault_ = false;
    faulty.Validate();  // showing may have stored defaults
  }
  if (!FocusFaultyField()) selector_->List().setFocus();
}

bool SectionPage::FocusFaultyField() {
  return form_.FocusFirst(session_.Current(type_)->FaultySettings(), selector_->List());
}

bool SectionPage::ValidateCurrent(const std::string& subject) {
  Section* section = session_.Current(type_);
  if (section == nullptr || section->Validate()) return true;
  Refuse("Validation Errors", "Settings for " + subject + " " + section->DisplayName() +
                                  " need to be corrected: \r\n" + section->ValidationError());
  FocusFaultyField();
  return false;
}

bool SectionPage::CanAdd() {
  if (session_.Document() != nullptr) return ValidateShown();
  Refuse(kProgramTitle,
         "The configuration could not be loaded. Please correct the file that was named and press Cancel to "
         "load it again.");
  return false;
}

void SectionPage::Refuse(const std::string& title, const std::string& reason) const {
  messages_.Show({.text = reason, .title = title, .icon = MessageIcon::Exclamation});
}

bool SectionPage::ConfirmDeletionOfServer() {
  const Section* section = session_.Current(type_);
  if (section == nullptr) return false;
  const std::string name = section->DisplayName();
  if (!Ini::CanDelete(*section)) {
    const char* reason =
        section->IsTwin() ? "the file holds two sections of this name" : "the name holds \"|\"";
    Refuse(kProgramTitle, "The settings for server " + name + " cannot be deleted here, because " + reason +
                              ". Please edit the section [" + section->Name +
                              "] of this file with a text editor:\r\n" + session_.Document()->Path());
    return false;
  }
  return messages_.Show({.text = "Do you want to delete settings for server " + name + "?",
                         .title = "Delete Section",
                         .buttons = MessageButtons::YesNo}) == Answer::Yes;
}

void SectionPage::Enable() {
  tags_.ToggleSection(Kind(), true);
  hint_.Say({});
}

void SectionPage::StartBrandNew() {
  tags_.StartBrandNew(Kind());
  if (!selector_->IsEmpty()) return;  // a queue is shown that cannot be used
  hint_.Say(session_.Document() != nullptr
                ? firstStep_
                : QStringLiteral("The configuration could not be loaded. Please correct the file that was "
                                 "named,\nthen press Cancel to load it again."));
}

void SectionPage::ShowAdded(Section& section) {
  session_.SetCurrent(type_, &section);
  selector_->InsertFirst(section);
  Enable();
  tags_.ToggleSection("Main", true);
}

void SectionPage::RemoveShown() {
  Section& section = *session_.Current(type_);
  selector_->Remove(section);
  session_.DeleteSection(section);
  if (selector_->IsEmpty())
    StartBrandNew();
  else
    ShowFirst();
}

}  // namespace pellorin
