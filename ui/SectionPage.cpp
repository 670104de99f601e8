#include "ui/SectionPage.h"

namespace pellorin {

SectionPage::SectionPage(SectionType type, ConfigurationSession& session, UserMessages& messages,
                         const ControlTags& tags)
    : session_(session), messages_(messages), tags_(tags), type_(type) {}

std::string_view SectionPage::Kind() const {
  switch (type_) {
    case SectionType::Mail:
      return "Mail";
    case SectionType::Sql:
      return "Sql";
    case SectionType::Queue:
      return "Queue";
    case SectionType::Admin:
      break;
  }
  return "Admin";
}

Section* SectionPage::Selected() const {
  const Ini* document = session_.Document();
  return document == nullptr ? nullptr : selector_->Selected(*document);
}

void SectionPage::ShowFirst() {
  selector_->SelectFirst();
  ShowSelected();
}

void SectionPage::Enable() {
  tags_.ToggleSection(Kind(), true);
}

void SectionPage::StartBrandNew() {
  tags_.StartBrandNew(Kind());
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
