// Puts one mail into the shown queue, through the instance that the SQL page shows.
#pragma once

#include "ui/probes/Probe.h"

namespace pellorin {

class QueueProbe {
 public:
  QueueProbe(const ProbeServices& services, SqlLogin login) : services_(services), login_(std::move(login)) {}
  // SqlError when the database cannot be made the current one.
  void Run();

 private:
  // As in SqlServerProbe.
  bool Send(const std::string& address, const Section& instance, const Section& queue);
  std::string Body(const Section& instance, const Section& queue, const std::string& database) const;

  const ProbeServices& services_;
  SqlLogin login_;
};

}  // namespace pellorin
