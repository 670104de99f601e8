// What the window asks before it closes: whether a configuration without servers is intended, and whether
// to save changes.
#pragma once

#include "base/UserMessages.h"
#include "ui/pages/ConfigurationSession.h"

namespace pellorin {

// False when the window must stay open. Saves the changes when the user wants that.
bool MayClose(ConfigurationSession& session, UserMessages& messages);

}  // namespace pellorin
