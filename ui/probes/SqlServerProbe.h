// Sends one mail that describes the configuration, through sp_sendPLN of the shown instance.
#pragma once

#include "ui/probes/Probe.h"

namespace pellorin {

class SqlServerProbe {
 public:
  SqlServerProbe(const ProbeServices& services, SqlLogin login)
      : services_(services), login_(std::move(login)) {}
  void Run();

 private:
  // False after the box that says why no connection could be opened. CallFailed when the call fails.
  bool Send(const std::string& address, const Section& instance);
  std::string Body(const Section& instance) const;

  const ProbeServices& services_;
  SqlLogin login_;
};

}  // namespace pellorin
