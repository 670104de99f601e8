// The service's own mail component, as far as this program uses it. Send does not throw for a mail that
// cannot be sent: it returns false, and LastErrorNumber, -Source and -Description say why.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace pellorin {

// The arguments of Send, in the component's order. Only the service knows the meaning of the numbered ones:
// this program passes the defaults below. The sixteenth argument, the success flag, is Send's result.
struct MailArguments {
  std::string recipients;
  std::string subject;
  std::string message;
  std::string text4{};
  std::string text5{};
  std::string text6{};
  std::string text7{};
  std::string mailServer{};  // the section's name without "MAIL:"
  std::string format = "text";
  std::vector<std::string> collection10{};
  int number11 = 0;
  int number12 = 1;
  std::string text13{};
  std::string exceptionMode = "STOP";  // or "CONTINUE"
  std::vector<std::string> texts15{};
};

// A line of what was said while a mail was sent.
struct ConversationLine {
  enum class Kind { Sent, Received, Note };
  std::chrono::system_clock::time_point time;
  Kind kind = Kind::Note;
  std::string text;  // UTF-8; holds no password and no part of a login
};

class MailComponent {
 public:
  // Whether a running send should go on. Called several times a second, on the thread that called Send.
  using Watch = std::function<bool()>;

  virtual ~MailComponent() = default;
  virtual std::string InstallFolder() = 0;  // full path of the folder that holds Pellorin.DLL
  virtual std::string Version() = 0;        // the service's
  // For all later sends; an empty watch lets them run. A send that its watch ends fails with the description
  // kCancelled, unless the mail was already accepted.
  virtual void SetWatch(Watch watch) = 0;
  virtual bool Send(const MailArguments& arguments) = 0;
  // What was said during the last send; empty when the component does not tell.
  virtual std::vector<ConversationLine> LastConversation() = 0;
  // These three describe the last failed send.
  virtual int LastErrorNumber() = 0;
  virtual std::string LastErrorSource() = 0;
  virtual std::string LastErrorDescription() = 0;

  static constexpr const char* kCancelled = "The test was cancelled.";
};

}  // namespace pellorin
