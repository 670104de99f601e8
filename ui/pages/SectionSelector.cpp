#include "ui/pages/SectionSelector.h"

#include <QSignalBlocker>

#include "ui/pages/SectionItems.h"

namespace pellorin {

void SectionSelector::Clear() {
  const QSignalBlocker blocker(list_);
  list_.clear();
}

void SectionSelector::Append(const Section& section) {
  Insert(list_.count(), section);
}

void SectionSelector::InsertFirst(const Section& section) {
  Insert(0, section);
}

void SectionSelector::Insert(int index, const Section& section) {
  const QSignalBlocker blocker(list_);
  list_.insertItem(index, QString::fromStdString(section.DisplayName()), IdentityOf(section));
}

void SectionSelector::Remove(const Section& section) {
  const QSignalBlocker blocker(list_);
  list_.removeItem(IndexOf(section));
}

void SectionSelector::Select(const Section& section) {
  const QSignalBlocker blocker(list_);
  list_.setCurrentIndex(IndexOf(section));
}

void SectionSelector::SelectFirst() {
  const QSignalBlocker blocker(list_);
  list_.setCurrentIndex(0);
}

Section* SectionSelector::Selected(const Ini& document) const {
  return SectionOf(list_.currentData(), document);
}

int SectionSelector::IndexOf(const Section& section) const {
  return list_.findData(IdentityOf(section));
}

}  // namespace pellorin
