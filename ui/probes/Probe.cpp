#include "ui/probes/Probe.h"

#include <algorithm>

#include "config/DateTimeWriting.h"
#include "sql/OpenConnection.h"
#include "ui/controls/QtDates.h"
#include "ui/pages/SaveConfiguration.h"

namespace pellorin {

bool SaveBeforeProbe(const ProbeServices& services) {
  if (!services.session.Document()->HasChanges()) return true;
  const Answer answer = services.messages.Show(
      {.text = "Before testing, it's necessary to Save settings. Would you like to save settings now?",
       .icon = MessageIcon::Information,
       .buttons = MessageButtons::YesNo,
       .defaultButton = Answer::No});
  return answer == Answer::Yes &&
         SaveConfiguration(services.session, services.messages) == SaveOutcome::Saved;
}

std::string AskForAddress(const ProbeServices& services, const std::string& prompt) {
  const std::string address = services.messages.AskForText("Email Address", prompt, services.addresses);
  if (!address.empty() && std::ranges::find(services.addresses, address) == services.addresses.end())
    services.addresses.push_back(address);
  return address;
}

std::string NameOf(const Section* section) {
  return section == nullptr ? std::string() : section->DisplayName();
}

std::string SendOnLine(const LocaleConventions& locale, const QDateTime& now) {
  const std::chrono::seconds time{now.time().hour() * 3600 + now.time().minute() * 60 + now.time().second()};
  return "Send On: " + WriteMoment({DayOf(now.date()), time}, locale);
}

bool OpenForProbe(SqlConnection& connection, const SqlLogin& login, const ProbeServices& services) {
  const bool isOpen = OpenConnection(connection, login, services.messages);
  services.showSecurity(connection.SecurityNote());
  return isOpen;
}

void ShowOutcome(UserMessages& messages, const std::function<bool()>& send, const std::string& success) {
  try {
    if (send()) ShowProbeSucceeded(messages, success);
  } catch (const CallFailed& failure) {
    ShowProbeFailed(messages, std::string("Test Failed: ") + failure.what());
  }
}

void ShowProbeSucceeded(UserMessages& messages, const std::string& text) {
  messages.Show({.text = text, .title = "Test Succeeded", .icon = MessageIcon::Information});
}

void ShowProbeFailed(UserMessages& messages, const std::string& text) {
  messages.Show({.text = text, .title = "Test Failed", .icon = MessageIcon::Exclamation});
}

}  // namespace pellorin
