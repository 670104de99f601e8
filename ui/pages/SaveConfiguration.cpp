#include "ui/pages/SaveConfiguration.h"

#include <algorithm>

#include "ui/boxes/FailureMessage.h"

namespace pellorin {

SaveOutcome SaveConfiguration(ConfigurationSession& session, UserMessages& messages) {
  Ini& document = *session.Document();
  if (!document.Validate()) {
    messages.Show({.text = "Please correct the following errors: \r\n" + document.ValidationError(),
                   .title = "Validation Errors",
                   .icon = MessageIcon::Exclamation});
    const auto& sections = document.Sections();
    const auto faulty = std::find_if(sections.begin(), sections.end(),
                                     [](const auto& section) { return !section->ValidationError().empty(); });
    emit session.validationFailed(faulty->get());
    return SaveOutcome::Invalid;
  }
  try {
    session.Save();
  } catch (const NumberedError& error) {
    messages.Show(SaveFailureMessage(error, document));
    return SaveOutcome::Failed;
  }
  return SaveOutcome::Saved;
}

}  // namespace pellorin
