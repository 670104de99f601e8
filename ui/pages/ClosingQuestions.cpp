#include "ui/pages/ClosingQuestions.h"

#include <string>

#include "ui/pages/SaveConfiguration.h"

namespace pellorin {
namespace {

bool ConfirmIncomplete(UserMessages& messages, const std::string& title, const std::string& servers) {
  return messages.Show(
             {.text = "You do not have any " + servers +
                      " Servers configured. Pellorin will not be able to function in this configuration. Do "
                      "you really want to exit?",
              .title = title,
              .buttons = MessageButtons::YesNoCancel}) == Answer::Yes;
}

bool ConfirmMissingServers(const Ini& document, UserMessages& messages) {
  if (document.NumOfSections(SectionType::Mail) == 0)
    return ConfirmIncomplete(messages, "Incomplete Mail Server Configuration", "Mail");
  if (document.NumOfSections(SectionType::Sql) == 0)
    return ConfirmIncomplete(messages, "Incomplete SQL Server Configuration", "SQL");
  return true;
}

}  // namespace

bool MayClose(ConfigurationSession& session, UserMessages& messages) {
  const Ini* document = session.Document();
  if (document == nullptr) return true;
  if (!ConfirmMissingServers(*document, messages)) return false;
  if (!document->HasChanges()) return true;
  const Answer answer = messages.Show({.text = "Would you like to save changes?",
                                       .title = "Save Changes",
                                       .buttons = MessageButtons::YesNoCancel});
  if (answer == Answer::No) return true;
  return answer == Answer::Yes && SaveConfiguration(session, messages) == SaveOutcome::Saved;
}

}  // namespace pellorin
