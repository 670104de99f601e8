#include "ui/probes/TestMail.h"

#include "config/DateTimeText.h"
#include "sql/OpenConnection.h"
#include "ui/controls/QtDates.h"
#include "ui/pages/SaveConfiguration.h"

namespace pellorin {

bool SaveBeforeTest(const TestServices& services) {
  if (!services.session.Document()->HasChanges()) return true;
  const Answer answer = services.messages.Show(
      {.text = "Before testing, it's necessary to Save settings. Would you like to save settings now?",
       .icon = MessageIcon::Information,
       .buttons = MessageButtons::YesNo,
       .defaultButton = Answer::No});
  return answer == Answer::Yes &&
         SaveConfiguration(services.session, services.messages) == SaveOutcome::Saved;
}

std::string NameOf(const Section* section) {
  return section == nullptr ? std::string() : section->DisplayName();
}

std::string SendOnLine(const LocaleConventions& locale, const QDateTime& now) {
  const std::chrono::seconds time{now.time().hour() * 3600 + now.time().minute() * 60 + now.time().second()};
  return "Send On: " + WriteMoment({DayOf(now.date()), time}, locale);
}

bool OpenForTest(SqlConnection& connection, const Section& instance, const ShownLogin& login,
                 const TestServices& services) {
  const std::string server = instance.DisplayName();
  const bool isOpen =
      login.isTrusted ? OpenTrustedConnection(connection, server, services.messages)
                      : OpenSqlConnection(connection, server, login.user, login.password, services.messages);
  services.showSecurity(connection.SecurityNote());
  return isOpen;
}

void ShowOutcome(UserMessages& messages, const std::function<bool()>& send, const std::string& success) {
  try {
    if (send()) ShowTestSucceeded(messages, success);
  } catch (const CallFailed& failure) {
    ShowTestFailed(messages, std::string("Test Failed: ") + failure.what());
  }
}

void ShowTestSucceeded(UserMessages& messages, const std::string& text) {
  messages.Show({.text = text, .title = "Test Succeeded", .icon = MessageIcon::Information});
}

void ShowTestFailed(UserMessages& messages, const std::string& text) {
  messages.Show({.text = text, .title = "Test Failed", .icon = MessageIcon::Exclamation});
}

}  // namespace pellorin
