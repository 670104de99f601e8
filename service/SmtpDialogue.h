// Follows the replies of a mail server while libcurl sends it one mail: knows at which step the conversation
// stands, keeps the reply that refused something, whole, and stops what libcurl would do against the
// settings: going on in clear text where encryption was offered, or without the login that is configured.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pellorin {

enum class SmtpLogin { Anonymous, Basic, Ntlm };
enum class SmtpStep { Greeting, Hello, StartTls, Login, Sender, Recipient, Data, Message, Accepted };

class SmtpDialogue {
 public:
  SmtpDialogue(SmtpLogin login, bool isEncrypted, std::size_t recipients)
      : login_(login), isEncrypted_(isEncrypted), recipients_(recipients) {}

  // The next bytes of the replies, whole lines or parts of them. False: not one command more may be sent.
  bool Take(std::string_view bytes);

  SmtpStep Step() const { return step_; }        // what is awaited, or what was refused
  bool IsGreeted() const { return isGreeted_; }  // some complete reply has come
  bool IsAccepted() const { return step_ == SmtpStep::Accepted; }
  bool IsRefused() const { return refusalCode_ != 0; }
  int RefusalCode() const { return refusalCode_; }
  const std::vector<std::string>& RefusalLines() const { return refusal_; }  // of the server, as they came
  std::size_t RecipientsTaken() const { return recipientsTaken_; }
  // The login methods that the server offers, when none of them is the configured kind.
  bool IsLoginMissing() const { return isLoginMissing_; }
  // The server offers encryption, but in another spelling than libcurl takes.
  bool IsEncryptionUnusable() const { return isEncryptionUnusable_; }
  const std::string& OfferedLogins() const { return offeredLogins_; }

 private:
  bool TakeLine(std::string_view line);
  bool TakeReply(int code);
  bool TakeHello(int code);
  bool Advance(bool isExpected, int code, SmtpStep next);
  bool Refuse(int code);
  void ReadCapabilities();
  bool OffersLogin() const;

  SmtpLogin login_;
  bool isEncrypted_;
  std::size_t recipients_;
  SmtpStep step_ = SmtpStep::Greeting;
  std::string partOfLine_;
  std::vector<std::string> lines_;  // of the reply that is arriving
  std::size_t replySize_ = 0;
  bool isGreeted_ = false;
  bool isSimpleHello_ = false;  // EHLO was refused: HELO is tried
  bool offersEncryption_ = false;
  std::string offeredLogins_;
  bool isLoginMissing_ = false;
  bool isEncryptionUnusable_ = false;
  std::size_t recipientsTaken_ = 0;
  int refusalCode_ = 0;
  std::vector<std::string> refusal_;
};

}  // namespace pellorin
