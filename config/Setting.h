// One Name=Value entry of a section. Remembers the value that was last loaded or saved.
#pragma once

#include <string>

namespace pellorin {

class Section;

struct Setting {
  std::string OriginalValue;  // empty for an entry created since the last load or save
  std::string Value;          // always clear text, for passwords too
  std::string Name;
  pellorin::Section* Section = nullptr;  // the section that holds the entry

  bool HasChanges() const { return Value != OriginalValue; }
};

}  // namespace pellorin
