// What the three probes have in common: they send a real mail through a mail server, a SQL Server or a
// queue. A probe reads no widget. It is handed the session, the messages, the components and the login
// that the page shows.
#pragma once

#include <QDateTime>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/UserMessages.h"
#include "service/MailComponent.h"
#include "sql/SqlConnection.h"
#include "sql/SqlLogin.h"
#include "ui/pages/ConfigurationSession.h"

namespace pellorin {

// Lives while a probe works. The window decides how to show that.
class ProbeWork {
 public:
  virtual ~ProbeWork() = default;
};

struct ProbeServices {
  ConfigurationSession& session;
  UserMessages& messages;
  MailComponent& mail;
  SqlConnectionFactory connect;
  // `doing`: what the window says meanwhile.
  std::function<std::unique_ptr<ProbeWork>(const std::string& doing)> beginWork;
  // Shows the note about the probe's connection on the page in front.
  std::function<void(const std::string& note)> showSecurity;
  // Shows what was said during a test of the shown mail server.
  std::function<void(const std::vector<ConversationLine>& lines)> showConversation;
  std::vector<std::string>& addresses;  // that the user gave so far
  FileOperations& files;
  std::string programFolder;  // full path
};

// A call of the procedure failed; what() is the server's own sentence.
class CallFailed : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A probe uses the saved settings, so this asks to save when there are changes. False when
// the probe must stop.
bool SaveBeforeProbe(const ProbeServices& services);

// The address to send to; empty when cancelled. Suggests those that the user gave before.
std::string AskForAddress(const ProbeServices& services, const std::string& prompt);

// The name of a section as the mail shows it; empty for null.
std::string NameOf(const Section* section);
// "Send On: 11/22/2026 8:41:00 AM", without a line break.
std::string SendOnLine(const LocaleConventions& locale, const QDateTime& now = QDateTime::currentDateTime());

// Opens the connection to an instance with the login that the SQL page shows, saved or not. False after the
// box that says why not.
bool OpenForProbe(SqlConnection& connection, const SqlLogin& login, const ProbeServices& services);

// Runs `send`. Shows the text `success` when it returns true, and a CallFailed as "Test Failed". Shows
// nothing when it returns false: a box has already said that no connection could be opened. Passes
// other exceptions on.
void ShowOutcome(UserMessages& messages, const std::function<bool()>& send, const std::string& success);
void ShowProbeSucceeded(UserMessages& messages, const std::string& text);
void ShowProbeFailed(UserMessages& messages, const std::string& text);

}  // namespace pellorin
