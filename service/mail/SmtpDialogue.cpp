#include "service/mail/SmtpDialogue.h"

#include <algorithm>
#include <utility>

#include "base/Text.h"
#include "base/TextCase.h"
#include "service/mail/Base64.h"

namespace pellorin {
namespace {

constexpr std::size_t kLargestReply = 64u * 1024;

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

bool HasCode(std::string_view line) {
  return line.size() >= 3 && std::all_of(line.begin(), line.begin() + 3, IsDigit);
}

int CodeOf(std::string_view line) {
  return (line[0] - '0') * 100 + (line[1] - '0') * 10 + (line[2] - '0');
}

// The text of a reply, after its code.
std::string_view TextOf(std::string_view line) {
  return line.substr(std::min<std::size_t>(line.size(), 4));
}

bool IsPositive(int code) {
  return code / 100 == 2;
}

// As libcurl sees it: a code and a blank, or a code alone.
bool EndsReply(std::string_view line) {
  return HasCode(line) && (line.size() == 3 || line[3] == ' ');
}

bool IsWanted(const std::string& offered, SmtpLogin login) {
  if (login == SmtpLogin::Ntlm) return EqualIgnoringCase(offered, "NTLM");
  return EqualIgnoringCase(offered, "PLAIN") || EqualIgnoringCase(offered, "LOGIN");
}

bool IsCapital(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char letter) { return letter >= 'a' && letter <= 'z'; });
}

// The server's message of an NTLM login (MS-NLMP 2.2.1.2). If it lacks target information, libcurl answers in
// NTLM's first version.
bool IsNtlmChallenge(const std::string& message) {
  return message.starts_with(std::string_view("NTLMSSP\0\2", 9));
}
bool HasTargetInformation(const std::string& challenge) {
  constexpr std::size_t kFlagByte = 22;
  constexpr unsigned char kTargetInformation = 0x80;
  constexpr std::size_t kLength = 40;  // 16 bits
  constexpr std::size_t kHeader = 48;
  return challenge.size() >= kHeader &&
         (static_cast<unsigned char>(challenge[kFlagByte]) & kTargetInformation) != 0 &&
         (challenge[kLength] != 0 || challenge[kLength + 1] != 0);
}

}  // namespace

bool SmtpDialogue::Take(std::string_view bytes) {
  replySize_ += bytes.size();
  if (replySize_ > kLargestReply) return false;
  partOfLine_ += bytes;
  for (std::size_t end; (end = partOfLine_.find('\n')) != std::string::npos;) {
    std::string line = partOfLine_.substr(0, end);
    partOfLine_.erase(0, end + 1);
    if (line.ends_with('\r')) line.pop_back();
    if (!TakeLine(line)) return false;
  }
  return true;
}

bool SmtpDialogue::TakeLine(std::string_view line) {
  lines_.emplace_back(line);
  if (!EndsReply(line)) return true;
  isGreeted_ = true;
  const bool goesOn = isRefused_ || TakeReply(CodeOf(line));
  lines_.clear();
  replySize_ = 0;
  return goesOn;
}

// The order of libcurl's commands. Each is sent after the answer to the one before.
bool SmtpDialogue::TakeReply(int code) {
  switch (step_) {
    case SmtpStep::Greeting:
      return Advance(IsPositive(code), code, SmtpStep::Hello);
    case SmtpStep::Hello:
      return TakeHello(code);
    case SmtpStep::StartTls:
      isEncrypted_ = code == 220;
      // A refusal ends the dialogue: libcurl would go on in clear text.
      return Advance(isEncrypted_, code, SmtpStep::Hello) && isEncrypted_;
    case SmtpStep::Login:
      return code == 334 ? TakeChallenge() : Advance(code == 235, code, SmtpStep::Sender);
    case SmtpStep::Sender:
      return Advance(IsPositive(code), code, SmtpStep::Recipient);
    case SmtpStep::Recipient:
      if (IsPositive(code)) ++recipientsTaken_;
      return Advance(IsPositive(code), code,
                     recipientsTaken_ < recipients_ ? SmtpStep::Recipient : SmtpStep::Data);
    case SmtpStep::Data:
      return Advance(code == 354, code, SmtpStep::Message);
    case SmtpStep::Message:
      return Advance(code == 250, code, SmtpStep::Accepted);
    case SmtpStep::Accepted:
      break;  // the answer to QUIT changes nothing
  }
  return true;
}

bool SmtpDialogue::Advance(bool isExpected, int code, SmtpStep next) {
  if (!isExpected) return Refuse(code);
  step_ = next;
  return true;
}

// After a refusal libcurl still sends QUIT. After any other unexpected reply libcurl may be ahead of this
// class, so nothing more may be sent.
bool SmtpDialogue::Refuse(int code) {
  isRefused_ = true;
  KeepRefusal(code);
  return code >= 400;
}

void SmtpDialogue::KeepRefusal(int code) {
  refusalCode_ = code;
  refusal_ = lines_;
}

bool SmtpDialogue::Stop(SmtpObstacle obstacle) {
  obstacle_ = obstacle;
  return false;
}

bool SmtpDialogue::TakeHello(int code) {
  const bool wasSimple = std::exchange(isSimpleHello_, false);
  if (!IsPositive(code)) {
    if (wasSimple) return Refuse(code);
    isSimpleHello_ = true;
    KeepRefusal(code);  // in case HELO gets no answer
    return true;
  }
  offersEncryption_ = isEncryptionMisspelt_ = false;
  offeredLogins_.clear();
  loginOffer_ = SmtpObstacle::LoginMissing;
  if (!wasSimple) ReadCapabilities();
  if (offersEncryption_ && !isEncrypted_) {
    step_ = SmtpStep::StartTls;
    return true;
  }
  // libcurl would go on in clear text.
  if (isEncryptionMisspelt_ && !isEncrypted_) return Stop(SmtpObstacle::EncryptionMisspelt);
  step_ = login_ == SmtpLogin::Anonymous ? SmtpStep::Sender : SmtpStep::Login;
  const bool goesOn = login_ == SmtpLogin::Anonymous || loginOffer_ == SmtpObstacle::None;
  return goesOn || Stop(loginOffer_);
}

bool SmtpDialogue::TakeChallenge() {
  if (login_ != SmtpLogin::Ntlm || isEncrypted_) return true;
  const std::string challenge = FromBase64(TextOf(lines_.back()));
  return !IsNtlmChallenge(challenge) || HasTargetInformation(challenge) || Stop(SmtpObstacle::LoginOutdated);
}

void SmtpDialogue::ReadCapabilities() {
  for (const std::string& line : lines_) {
    const std::string_view capability = TextOf(line);
    if (capability.starts_with("STARTTLS"))
      offersEncryption_ = true;
    else if (StartsWithIgnoringCase(capability, "STARTTLS"))
      isEncryptionMisspelt_ = true;
    else if (StartsWithIgnoringCase(capability, "AUTH "))
      ReadLogins(capability);
  }
}

void SmtpDialogue::ReadLogins(std::string_view capability) {
  std::string words(capability.substr(5));
  std::replace(words.begin(), words.end(), '\t', ' ');
  for (const std::string& word : SplitAt(" ", words)) {
    if (word.empty()) continue;
    offeredLogins_ += (offeredLogins_.empty() ? "" : " ") + word;
    if (!IsWanted(word, login_) || loginOffer_ == SmtpObstacle::None) continue;
    const bool isUsable = capability.starts_with("AUTH") && IsCapital(word);
    loginOffer_ = isUsable ? SmtpObstacle::None : SmtpObstacle::LoginMisspelt;
  }
}

}  // namespace pellorin
