// The failure of a section that cannot be written to the disk or removed from it.
#pragma once

#include <string>

#include "base/ErrorNumbers.h"
#include "base/NumberedError.h"

namespace pellorin {

// `reason`: a sentence for the administrator. `path`: the full path of the file.
inline NumberedError CannotSave(const std::string& sectionName, const std::string& reason,
                                const std::string& path) {
  return {kSectionNotSaved, ErrorSource("Section, Save"),
          "Could not save section " + sectionName + "\r\n" + reason, path};
}

}  // namespace pellorin
