#include "service/mail/MailAddress.h"

#include <algorithm>

#include "base/Text.h"
#include "service/mail/MailFailure.h"

namespace pellorin {
namespace {

bool IsPrintableAscii(char character) {
  return character > ' ' && character < 0x7F;
}

MailFailure BadAddress(std::string_view text, const std::string& reason) {
  return {kBadMailArgument, "The email address " + std::string(text) + " cannot be used: " + reason};
}

// Walks over a text and knows whether it is inside quotes.
class QuoteWatch {
 public:
  bool IsOutside(char character) {  // call it for each character in turn
    if (escaped_) return escaped_ = false;
    if (character == '"') {
      quoted_ = !quoted_;
      return false;
    }
    escaped_ = quoted_ && character == '\\';
    return !quoted_;
  }
  bool IsOpen() const { return quoted_; }

 private:
  bool quoted_ = false;
  bool escaped_ = false;
};

// The first position of one of these characters outside quotes; the text's size when there is none.
std::size_t FindOutsideQuotes(std::string_view text, std::string_view characters) {
  QuoteWatch quotes;
  for (std::size_t index = 0; index < text.size(); ++index)
    if (quotes.IsOutside(text[index]) && characters.find(text[index]) != std::string_view::npos) return index;
  if (quotes.IsOpen()) throw BadAddress(text, "a quote is not closed.");
  return text.size();
}

std::string WithoutQuotes(std::string_view name) {
  if (name.size() < 2 || name.front() != '"' || name.back() != '"') return std::string(name);
  name = name.substr(1, name.size() - 2);
  std::string plain;
  for (std::size_t index = 0; index < name.size(); ++index) {
    if (name[index] == '\\' && index + 1 < name.size()) ++index;
    plain += name[index];
  }
  return plain;
}

bool IsLocalPart(std::string_view text) {
  if (text.size() >= 2 && text.front() == '"') {  // FindOutsideQuotes has required the closing quote
    const std::string_view inner = text.substr(1, text.size() - 2);
    return text.back() == '"' && inner.find_first_of("\"\\") == std::string_view::npos &&
           std::all_of(inner.begin(), inner.end(),
                       [](char character) { return character == ' ' || IsPrintableAscii(character); });
  }
  constexpr std::string_view kSpecials = "()<>[]:;@\\,\"";
  return !text.empty() && std::all_of(text.begin(), text.end(), [&](char character) {
    return IsPrintableAscii(character) && kSpecials.find(character) == std::string_view::npos;
  });
}

bool IsDomain(std::string_view text) {
  const bool isLiteral = text.size() > 2 && text.front() == '[' && text.back() == ']';
  if (isLiteral) text = text.substr(1, text.size() - 2);
  const auto isAllowed = [isLiteral](char character) {
    const bool isAlphanumeric = (character >= 'a' && character <= 'z') ||
                                (character >= 'A' && character <= 'Z') ||
                                (character >= '0' && character <= '9');
    return isAlphanumeric || character == '.' || character == '-' || character == '_' ||
           (isLiteral && character == ':');
  };
  return !text.empty() && std::all_of(text.begin(), text.end(), isAllowed);
}

std::string CompleteAddress(std::string_view text, std::string_view defaultDomain) {
  defaultDomain = WithoutOuterBlanks(defaultDomain);
  if (defaultDomain.starts_with('@')) defaultDomain.remove_prefix(1);
  std::string address(text);
  if (FindOutsideQuotes(text, "@") == text.size()) {
    if (defaultDomain.empty()) throw BadAddress(text, "it has no domain, and there is no default domain.");
    address += "@" + std::string(defaultDomain);
  }
  const std::size_t at = address.rfind('@');
  if (!IsAscii(address))
    throw BadAddress(address, "only its display name may hold letters other than a to z.");
  if (!IsLocalPart(std::string_view(address).substr(0, at)) ||
      !IsDomain(std::string_view(address).substr(at + 1)))
    throw BadAddress(address, "it is not of the form name@domain.");
  constexpr std::size_t kLongestPath = 254;
  if (address.size() > kLongestPath) throw BadAddress(address, "it is too long.");
  return address;
}

MailAddress ParseAddress(std::string_view text, std::string_view defaultDomain) {
  const std::size_t open = FindOutsideQuotes(text, "<");
  if (open == text.size()) return {{}, CompleteAddress(text, defaultDomain)};
  if (!text.ends_with('>')) throw BadAddress(text, "it is not of the form Name <name@domain>.");
  const std::string_view inner = text.substr(open + 1, text.size() - open - 2);
  return {WithoutQuotes(WithoutOuterBlanks(text.substr(0, open))),
          CompleteAddress(WithoutOuterBlanks(inner), defaultDomain)};
}

}  // namespace

void RequireNoControlCharacters(const std::string& what, std::string_view text) {
  const auto found = std::ranges::find_if(text, IsControlCharacter);
  if (found == text.end()) return;
  throw MailFailure(kBadMailArgument, what + " holds a line break or another control character (code " +
                                          std::to_string(int{*found}) + "). Nothing was sent.");
}

std::vector<MailAddress> ParseAddresses(std::string_view text, std::string_view defaultDomain) {
  RequireNoControlCharacters("The email address", text);
  RequireNoControlCharacters("The default domain", defaultDomain);
  std::vector<MailAddress> addresses;
  for (std::string_view rest = text; !rest.empty();) {
    const std::size_t end = FindOutsideQuotes(rest, ";,");
    const std::string_view one = WithoutOuterBlanks(rest.substr(0, end));
    if (!one.empty()) addresses.push_back(ParseAddress(one, defaultDomain));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  if (addresses.empty()) throw MailFailure(kBadMailArgument, "There is no email address to send to or from.");
  return addresses;
}

}  // namespace pellorin
