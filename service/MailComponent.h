// The service's own mail component, as far as this program asks it anything.
#pragma once

#include <string>

namespace pellorin {

class MailComponent {
 public:
  virtual ~MailComponent() = default;
  virtual std::string InstallFolder() = 0;  // full path of the folder that holds Pellorin.DLL
};

}  // namespace pellorin
