#include "service/SmtpDialogue.h"

#include <algorithm>
#include <utility>

#include "platform/TextCase.h"
#include "platform/TextSplit.h"

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

bool IsPositive(int code) {
  return code / 100 == 2;
}

// As libcurl sees it: a code and a blank, or a code alone.
bool EndsReply(std::string_view line) {
  return HasCode(line) && (line.size() == 3 || line[3] == ' ');
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
  const bool goesOn = IsRefused() || isLoginMissing_ || TakeReply(CodeOf(line));
  lines_.clear();
  replySize_ = 0;
  return goesOn;
}

// The order of libcurl's commands, each sent when the one before it is answered.
bool SmtpDialogue::TakeReply(int code) {
  switch (step_) {
    case SmtpStep::Greeting:
      return Advance(IsPositive(code), code, SmtpStep::Hello);
    case SmtpStep::Hello:
      return TakeHello(code);
    case SmtpStep::StartTls:
      isEncrypted_ = code == 220;
      // A refusal ends it here: libcurl would go on in clear text.
      return Advance(isEncrypted_, code, SmtpStep::Hello) && isEncrypted_;
    case SmtpStep::Login:
      return code == 334 || Advance(code == 235, code, SmtpStep::Sender);
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

// libcurl takes leave of a server that refuses something. What is neither expected nor a refusal may mean
// that it is ahead of what is known here.
bool SmtpDialogue::Refuse(int code) {
  refusalCode_ = code;
  refusal_ = lines_;
  return code >= 400;
}

bool SmtpDialogue::TakeHello(int code) {
  if (!IsPositive(code)) return std::exchange(isSimpleHello_, true) ? Refuse(code) : true;
  offersEncryption_ = false;
  offeredLogins_.clear();
  if (!std::exchange(isSimpleHello_, false)) ReadCapabilities();
  if (isEncryptionUnusable_) return false;  // libcurl would go on in clear text
  if (offersEncryption_ && !isEncrypted_) {
    step_ = SmtpStep::StartTls;
    return true;
  }
  step_ = login_ == SmtpLogin::Anonymous ? SmtpStep::Sender : SmtpStep::Login;
  isLoginMissing_ = login_ != SmtpLogin::Anonymous && !OffersLogin();
  return !isLoginMissing_;
}

// Spelled as libcurl requires it: what libcurl does not see it does not use.
void SmtpDialogue::ReadCapabilities() {
  for (const std::string& line : lines_) {
    const std::string_view capability = std::string_view(line).substr(std::min<std::size_t>(line.size(), 4));
    if (capability.starts_with("STARTTLS"))
      offersEncryption_ = true;
    else if (EqualIgnoringCase(capability.substr(0, 8), "STARTTLS"))
      isEncryptionUnusable_ = !isEncrypted_;
    if (capability.starts_with("AUTH ")) {
      if (!offeredLogins_.empty()) offeredLogins_ += ' ';
      offeredLogins_ += capability.substr(5);
    }
  }
}

bool SmtpDialogue::OffersLogin() const {
  const std::vector<std::string> offered = SplitAt(" ", offeredLogins_);
  const auto isOffered = [&offered](const char* name) {
    return std::find(offered.begin(), offered.end(), name) != offered.end();
  };
  return login_ == SmtpLogin::Ntlm ? isOffered("NTLM") : isOffered("PLAIN") || isOffered("LOGIN");
}

}  // namespace pellorin
