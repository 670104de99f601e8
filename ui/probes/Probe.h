// What the probes of a mail server, a SQL Server and a queue have in common. A probe reads no widget: it is
// handed the session, the messages, the components, and what the page shows of the login.
#pragma once

#include <QDateTime>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "base/UserMessages.h"
#include "service/MailComponent.h"
#include "sql/SqlConnection.h"
#include "ui/pages/ConfigurationSession.h"

namespace pellorin {

// Lives while a test works; how that looks is the window's business.
class ProbeWork {
 public:
  virtual ~ProbeWork() = default;
};

struct ProbeServices {
  ConfigurationSession& session;
  UserMessages& messages;
  MailComponent& mail;
  SqlConnectionFactory connect;
  std::function<std::unique_ptr<ProbeWork>()> beginWork;
  std::function<void(const std::string& note)>
      showSecurity;  // of the test's connection, on the page in front
};

// As the SQL page shows it, saved or not.
struct ShownLogin {
  bool isTrusted = true;
  std::string user;
  std::string password;

  std::string Description() const { return isTrusted ? "Trusted" : user; }
};

// The server's own sentence about a call of the procedure that failed.
class CallFailed : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A test uses what is saved: asks for that when there are changes. False when the test must not go on.
bool SaveBeforeProbe(const ProbeServices& services);

// The name of a section as the mail shows it; empty when there is none.
std::string NameOf(const Section* section);
// "Send On: " and the moment with its seconds, without a line break.
std::string SendOnLine(const LocaleConventions& locale, const QDateTime& now = QDateTime::currentDateTime());

// Opens the connection to the shown instance; false when a box has said why not.
bool OpenForProbe(SqlConnection& connection, const Section& instance, const ShownLogin& login,
                  const ProbeServices& services);

// Shows the end of `send`: the text of its success, its failed call as "Test Failed", or nothing when it
// returns false because no connection could be opened, which a box has told already. Other exceptions pass.
void ShowOutcome(UserMessages& messages, const std::function<bool()>& send, const std::string& success);
void ShowProbeSucceeded(UserMessages& messages, const std::string& text);
void ShowProbeFailed(UserMessages& messages, const std::string& text);

}  // namespace pellorin
