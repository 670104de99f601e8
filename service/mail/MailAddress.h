// Mail addresses as users type them: a@b, Name <a@b>, "Last, First" <a@b>; several are separated by ; or ,
// outside of quotes. A text that could reach a mail server as anything but these addresses is refused with a
// MailFailure that says what is wrong.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pellorin {

struct MailAddress {
  std::string name;     // UTF-8, without quotes; mostly empty
  std::string address;  // local part @ domain, ASCII

  std::string Domain() const { return address.substr(address.rfind('@') + 1); }
};

// In order; at least one. `defaultDomain` completes an address that has no domain; may be empty.
std::vector<MailAddress> ParseAddresses(std::string_view text, std::string_view defaultDomain);

// Refuses line breaks and every other control character; `what` begins the sentence: "The subject".
void RequireNoControlCharacters(const std::string& what, std::string_view text);

}  // namespace pellorin
