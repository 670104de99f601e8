// Sends one mail through the shown mail server, by the service's own component and the saved settings.
#pragma once

#include "ui/probes/TestMail.h"

namespace pellorin {

class MailServerTest {
 public:
  explicit MailServerTest(const TestServices& services) : services_(services) {}
  void Run();

 private:
  bool Send(const std::string& address, const Section& server);
  void ReportFailure();

  const TestServices& services_;
};

}  // namespace pellorin
