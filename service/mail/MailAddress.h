// Mail addresses as users type them: a@b, Name <a@b>, "Last, First" <a@b>. Outside quotes, ";" and ","
// separate them. A text that a mail server could take for something else is refused with a MailFailure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pellorin {

struct MailAddress {
  std::string name;     // UTF-8, without quotes; often empty
  std::string address;  // local part, "@" and domain, in ASCII

  std::string Domain() const { return address.substr(address.rfind('@') + 1); }
};

// In order; at least one. `defaultDomain`, which may be empty, completes an address without a domain.
std::vector<MailAddress> ParseAddresses(std::string_view text, std::string_view defaultDomain);

// Refuses line breaks and other control characters. `what` begins the sentence, as in "The subject".
void RequireNoControlCharacters(const std::string& what, std::string_view text);

}  // namespace pellorin
