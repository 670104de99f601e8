// Validates and saves the document, for the Save button, the closing question and the probes.
#pragma once

#include "base/UserMessages.h"
#include "ui/pages/ConfigurationSession.h"

namespace pellorin {

enum class SaveOutcome { Saved, Invalid, Failed };

// Shows what is invalid ("Validation Errors"), or why the save failed. Shows nothing when it succeeds.
SaveOutcome SaveConfiguration(ConfigurationSession& session, UserMessages& messages);

}  // namespace pellorin
