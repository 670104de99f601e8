// Follows the replies of a mail server while libcurl sends it one mail. Knows the step of the conversation
// and keeps the reply that refused something. Stops libcurl where it would go on in clear text although
// encryption was offered, or without the configured login. libcurl 7.88 understands an offer in capital
// letters only, and so does this class.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pellorin {

enum class SmtpLogin { Anonymous, Basic, Ntlm };
enum class SmtpStep { Greeting, Hello, StartTls, Login, Sender, Recipient, Data, Message, Accepted };

// Why the conversation must end although the server refused nothing.
enum class SmtpObstacle {
  None,
  EncryptionMisspelt,  // it is offered, but not in capital letters
  LoginMissing,        // no login of the configured kind is offered
  LoginMisspelt,       // one is, but not in capital letters
  LoginOutdated,       // the first version of NTLM without encryption, which gives the password away
};

class SmtpDialogue {
 public:
  SmtpDialogue(SmtpLogin login, bool isEncrypted, std::size_t recipients)
      : login_(login), isEncrypted_(isEncrypted), recipients_(recipients) {}

  // Takes the next bytes of the replies, whole lines or parts of lines. False: no more commands may be sent.
  bool Take(std::string_view bytes);

  SmtpStep Step() const { return step_; }        // the step that is awaited or was refused
  bool IsGreeted() const { return isGreeted_; }  // a complete reply has come
  bool IsAccepted() const { return step_ == SmtpStep::Accepted; }
  bool IsRefused() const { return isRefused_; }
  // EHLO was refused, and HELO is not yet answered.
  bool IsHelloRefused() const { return isSimpleHello_; }
  // Of the refusal, or of the refused EHLO. The lines are the server's, unchanged.
  int RefusalCode() const { return refusalCode_; }
  const std::vector<std::string>& RefusalLines() const { return refusal_; }
  SmtpObstacle Obstacle() const { return obstacle_; }
  std::size_t RecipientsTaken() const { return recipientsTaken_; }
  const std::string& OfferedLogins() const { return offeredLogins_; }  // their names, separated by blanks
  bool IsEncrypted() const { return isEncrypted_; }                    // or will be at once

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
  std::vector<std::string> lines_;  // of the current reply
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
