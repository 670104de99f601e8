// Puts one mail into the shown queue, through the instance that the SQL page shows.
#pragma once

#include "ui/probes/TestMail.h"

namespace pellorin {

class QueueTest {
 public:
  QueueTest(const TestServices& services, ShownLogin login) : services_(services), login_(std::move(login)) {}
  // SqlError when the database cannot be switched to.
  void Run();

 private:
  // As SqlServerTest's.
  bool Send(const std::string& address, const Section& instance, const Section& queue);
  std::string Body(const Section& instance, const Section& queue, const std::string& database) const;

  const TestServices& services_;
  ShownLogin login_;
};

}  // namespace pellorin
