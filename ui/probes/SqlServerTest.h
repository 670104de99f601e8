// Has sp_sendPLN of the shown instance send one mail that describes the configuration.
#pragma once

#include "ui/probes/TestMail.h"

namespace pellorin {

class SqlServerTest {
 public:
  SqlServerTest(const TestServices& services, ShownLogin login)
      : services_(services), login_(std::move(login)) {}
  void Run();

 private:
  // False when no connection could be opened, which a box has told; CallFailed.
  bool Send(const std::string& address, const Section& instance);
  std::string Body(const Section& instance) const;

  const TestServices& services_;
  ShownLogin login_;
};

}  // namespace pellorin
