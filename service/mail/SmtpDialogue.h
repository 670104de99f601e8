// Follows the replies of a mail server while libcurl sends it one mail: knows at which step the conversation
// stands, keeps the reply that refused something, whole, and stops what libcurl would do against the
// settings: going on in clear text where encryption was offered, or without the login that is configured.
// What libcurl understands of an offer is what libcurl 7.88 does: keywords in capital letters only.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pellorin {

enum class SmtpLogin { Anonymous, Basic, Ntlm };
enum class SmtpStep { Greeting, Hello, StartTls, Login, Sender, Recipient, Data, Message, Accepted };

// Why the conversation may not go on although the server refused nothing.
enum class SmtpObstacle {
  None,
  EncryptionMisspelt,  // it is offered, but not in capital letters
  LoginMissing,        // no login of the configured kind is offered
  LoginMisspelt,       // one is, but not in capital letters
  LoginOutdated,       // the first version of NTLM in clear: it gives the password away
};

class SmtpDialogue {
 public:
  SmtpDialogue(SmtpLogin login, bool isEncrypted, std::size_t recipients)
      : login_(login), isEncrypted_(isEncrypted), recipients_(recipients) {}

  // The next bytes of the replies, whole lines or parts of them. False: not one command more may be sent.
  bool Take(std::string_view bytes);

  SmtpStep Step() const { return step_; }        // what is awaited, or what was refused
  bool IsGreeted() const { return isGreeted_; }  // some complete reply has come
  bool IsAccepted() const { return step_ == SmtpStep::Accepted; }
  bool IsRefused() const { return isRefused_; }
  // EHLO was refused, and HELO is not answered yet.
  bool IsHelloRefused() const { return isSimpleHello_; }
  // Of either refusal; the server's lines as they came.
  int RefusalCode() const { return refusalCode_; }
  const std::vector<std::string>& RefusalLines() const { return refusal_; }
  SmtpObstacle Obstacle() const { return obstacle_; }
  std::size_t RecipientsTaken() const { return recipientsTaken_; }
  const std::string& OfferedLogins() const { return offeredLogins_; }  // their names, separated by blanks
  bool IsEncrypted() const { return isEncrypted_; }                    // or about to be

 private:
  bool TakeLine(std::string_view line);
  bool TakeReply(int code);
  bool TakeHello(int code);
  bool TakeChallenge();
  bool Advance(bool isExpected, int code, SmtpStep next);
  bool Refuse(int code);
  void KeepRefusal(int code);
  bool Stop(SmtpObstacle obstacle);
  void ReadCapabilities();
  void ReadLogins(std::string_view capability);

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
  bool isEncryptionMisspelt_ = false;
  std::string offeredLogins_;
  SmtpObstacle loginOffer_ = SmtpObstacle::LoginMissing;
  SmtpObstacle obstacle_ = SmtpObstacle::None;
  std::size_t recipientsTaken_ = 0;
  bool isRefused_ = false;
  int refusalCode_ = 0;
  std::vector<std::string> refusal_;
};

}  // namespace pellorin
