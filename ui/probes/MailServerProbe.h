// Sends one mail through the shown mail server, with its saved settings and the service's own component.
#pragma once

#include "ui/probes/Probe.h"

namespace pellorin {

class MailServerProbe {
 public:
  explicit MailServerProbe(const ProbeServices& services) : services_(services) {}
  void Run();

 private:
  bool Send(const std::string& address, const Section& server);
  void ReportFailure();

  const ProbeServices& services_;
};

}  // namespace pellorin
