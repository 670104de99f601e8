// A page's drop-down list of sections. None of these operations runs the list's handler.
#pragma once

#include <QComboBox>

#include "config/Ini.h"

namespace pellorin {

class SectionSelector {
 public:
  explicit SectionSelector(QComboBox& list) : list_(list) {}

  QComboBox& List() const { return list_; }
  bool IsEmpty() const { return list_.count() == 0; }
  void Clear();
  void Append(const Section& section);
  void InsertFirst(const Section& section);
  void Remove(const Section& section);
  void Select(const Section& section);
  void SelectFirst();
  Section* Selected(const Ini& document) const;  // null when nothing is selected

 private:
  int IndexOf(const Section& section) const;
  void Insert(int index, const Section& section);

  QComboBox& list_;
};

}  // namespace pellorin
