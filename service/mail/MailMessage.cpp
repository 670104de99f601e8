#include "service/mail/MailMessage.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "base/Text.h"
#include "base/Utf8.h"
#include "service/mail/Base64.h"

namespace pellorin {
namespace {

constexpr std::size_t kLongestLine = 76;
constexpr const char* kLineEnd = "\r\n";

bool IsPlain(char character) {
  return IsAscii(character) && !IsControlCharacter(character);
}

// A header, its words on as many lines as they need.
class Header {
 public:
  Header(std::string& message, const std::string& name) : message_(message), column_(name.size() + 1) {
    message_ += name + ":";
  }
  ~Header() { message_ += kLineEnd; }
  Header(const Header&) = delete;
  Header& operator=(const Header&) = delete;

  void Add(const std::string& word) {
    if (column_ + 1 + word.size() > kLongestLine) {
      message_ += kLineEnd;
      column_ = 0;
    }
    message_ += " " + word;
    column_ += 1 + word.size();
  }
  void Add(const std::vector<std::string>& words) {
    for (const std::string& word : words) Add(word);
  }

 private:
  std::string& message_;
  std::size_t column_;
};

// A text as encoded words. Each holds whole characters and fits the line after any header's name.
std::vector<std::string> EncodedWords(std::string_view text) {
  constexpr std::size_t kBytesPerWord = 39;
  std::vector<std::string> words;
  const auto add = [&words](std::string_view bytes) { words.push_back("=?utf-8?B?" + Base64(bytes) + "?="); };
  std::size_t begin = 0;
  for (std::size_t end = 0; end < text.size();) {
    const std::size_t length = std::max<std::size_t>(DecodeUtf8(text, end).length, 1);
    if (end + length - begin > kBytesPerWord) {
      add(text.substr(begin, end - begin));
      begin = end;
    }
    end += length;
  }
  if (begin < text.size()) add(text.substr(begin));
  return words;
}

// Whether the text can stand in a header as it is and reads back unchanged.
bool CanStandInHeader(std::string_view text, std::size_t room) {
  return text.size() <= room && std::all_of(text.begin(), text.end(), IsPlain) && !text.starts_with(' ') &&
         !text.ends_with(' ') && text.find("=?") == std::string_view::npos;
}

std::vector<std::string> SubjectWords(const std::string& subject) {
  constexpr std::size_t kRoom = kLongestLine - std::string_view("Subject: ").size();
  if (subject.empty()) return {};
  return CanStandInHeader(subject, kRoom) ? std::vector{subject} : EncodedWords(subject);
}

std::vector<std::string> NameWords(const std::string& name) {
  constexpr std::size_t kRoom = 60;
  if (name.empty()) return {};
  if (!CanStandInHeader(name, kRoom)) return EncodedWords(name);
  std::string quoted = "\"";
  for (const char character : name) {
    if (character == '"' || character == '\\') quoted += '\\';
    quoted += character;
  }
  quoted += '"';
  return quoted.size() <= kLongestLine - 6 ? std::vector{quoted} : EncodedWords(name);
}

void AddAddresses(std::string& message, const std::string& headerName,
                  const std::vector<MailAddress>& addresses) {
  Header header(message, headerName);
  for (std::size_t index = 0; index < addresses.size(); ++index) {
    const MailAddress& address = addresses[index];
    RequireNoControlCharacters("The display name", address.name);
    RequireNoControlCharacters("The email address", address.address);
    header.Add(NameWords(address.name));
    const std::string separator = index + 1 < addresses.size() ? "," : "";
    header.Add((address.name.empty() ? address.address : "<" + address.address + ">") + separator);
  }
}

// Without their line ends. A line end after the last line does not begin another line.
std::vector<std::string> Lines(std::string_view body) {
  std::vector<std::string> lines;
  while (!body.empty()) {
    const std::size_t end = std::min(body.find_first_of("\r\n"), body.size());
    lines.emplace_back(body.substr(0, end));
    body.remove_prefix(end);
    if (!body.empty()) body.remove_prefix(body.starts_with(kLineEnd) ? 2 : 1);
  }
  return lines;
}

bool NeedsEncoding(const std::string& line) {
  return line.size() > kLongestLine || !std::all_of(line.begin(), line.end(), IsPlain) || line.ends_with(' ');
}

std::string QuotedPrintable(const std::string& line) {
  std::string encoded;
  std::size_t column = 0;
  for (std::size_t index = 0; index < line.size(); ++index) {
    const char character = line[index];
    const bool isLast = index + 1 == line.size();
    const bool asItIs = IsPlain(character) && character != '=' && !(character == ' ' && isLast);
    std::string piece(1, asItIs ? character : '=');
    if (!asItIs) AppendHex(piece, static_cast<unsigned char>(character));
    if (column + piece.size() > kLongestLine - 1) {  // leaves room for the "=" of a continued line
      encoded += "=\r\n";
      column = 0;
    }
    encoded += piece;
    column += piece.size();
  }
  return encoded;
}

}  // namespace

std::string MailDate(std::time_t time) {
  constexpr std::array<const char*, 7> kDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const std::tm local = *std::localtime(&time);
  std::array<char, 8> zone{};
  std::strftime(zone.data(), zone.size(), "%z", &local);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%s, %02d %s %04d %02d:%02d:%02d %s",
                kDays.at(static_cast<std::size_t>(local.tm_wday)), local.tm_mday,
                kMonths.at(static_cast<std::size_t>(local.tm_mon)), local.tm_year + 1900, local.tm_hour,
                local.tm_min, local.tm_sec, zone.data());
  return text.data();
}

std::string BuildMessage(const MailMessage& message, std::time_t sentAt, const std::string& uniqueId) {
  RequireNoControlCharacters("The subject", message.subject);
  const std::vector<std::string> lines = Lines(message.body);
  const bool encode = std::any_of(lines.begin(), lines.end(), NeedsEncoding);
  std::string text = "Date: " + MailDate(sentAt) + kLineEnd;
  AddAddresses(text, "From", {message.from});
  AddAddresses(text, "To", message.to);
  Header(text, "Message-ID").Add("<" + uniqueId + "@" + message.from.Domain() + ">");
  Header(text, "Subject").Add(SubjectWords(message.subject));
  text += "MIME-Version: 1.0\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: ";
  text += encode ? "quoted-printable" : "7bit";
  text += "\r\n\r\n";
  for (const std::string& line : lines) text += (encode ? QuotedPrintable(line) : line) + kLineEnd;
  return text;
}

}  // namespace pellorin
