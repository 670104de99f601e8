// List items that refer to a section and not to its name: of two sections with one name, each can be chosen.
#pragma once

#include <QVariant>

#include "config/Ini.h"

namespace pellorin {

// What such an item holds: the section's address. A text could lose bytes of the name.
inline QVariant IdentityOf(const Section& section) {
  return QVariant::fromValue(reinterpret_cast<quintptr>(&section));
}
// The section that an item refers to. Null without an item, or when the section has left the document.
inline Section* SectionOf(const QVariant& identity, const Ini& document) {
  return document.SectionAt(reinterpret_cast<const void*>(identity.value<quintptr>()));
}

}  // namespace pellorin
