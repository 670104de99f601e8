// One mail on its way through libcurl. Run() needs a thread of its own, so that the waiting thread can watch
// the time and let the user cancel: libcurl blocks for a second at some steps, and when it closes a
// connection, it waits for the server's answer without calling back.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "platform/Sockets.h"
#include "service/mail/LibCurl.h"
#include "service/mail/SmtpDelivery.h"
#include "service/mail/SmtpDialogue.h"
#include "service/mail/SmtpRecord.h"

namespace pellorin {

enum class SmtpPhase { LookUp, Connecting, Handshake, Conversation };

class SmtpTransfer {
 public:
  // Prepares everything, sends nothing. MailFailure for arguments that libcurl cannot use. All
  // arguments must outlive the transfer.
  SmtpTransfer(const SmtpServer& server, const MailMessage& message, const std::string& text,
               Conversation& conversation);
  SmtpTransfer(const SmtpTransfer&) = delete;
  SmtpTransfer& operator=(const SmtpTransfer&) = delete;

  void Run();

  // May be called from any thread while it runs:
  void Cancel();  // as soon as possible
  void ShutDownConnection();
  bool IsSettled() const { return isSettled_; }  // accepted or refused: only the closing is left

  // Valid after it has run:
  CURLcode Result() const { return result_; }
  // libcurl's text, or the system's if that says more.
  const std::string& ResultText() const { return resultText_; }
  SmtpPhase Phase() const { return phase_; }  // the last that it reached
  const SmtpDialogue& Dialogue() const { return dialogue_; }
  bool IsCancelled() const { return isCancelled_; }

 private:
  struct HandleEnd {
    void operator()(CURL* handle) const { Curl().curl_easy_cleanup(handle); }
    void operator()(CURLU* url) const { Curl().curl_url_cleanup(url); }
    void operator()(curl_slist* list) const { Curl().curl_slist_free_all(list); }
  };

  template <typename Value>
  void Set(CURLoption option, Value value);
  void SetAddress();
  void SetTimes();
  void SetLogin();
  void SetMessage(const MailMessage& message);
  void SetCallbacks();

  void KeepResult(CURLcode result);
  SmtpPhase ReachedPhase() const;

  static int OnDebug(CURL*, curl_infotype kind, char* bytes, std::size_t size, void* self);
  static std::size_t OnReply(char* bytes, std::size_t size, std::size_t count, void* self);
  static std::size_t OnRead(char* buffer, std::size_t size, std::size_t count, void* self);
  static int OnProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t);
  static curl_socket_t OnOpen(void* self, curlsocktype purpose, curl_sockaddr* address);
  static int OnClose(void* self, curl_socket_t socket);

  const SmtpServer& server_;
  const std::string& text_;
  std::size_t sent_ = 0;  // of the text
  SmtpDialogue dialogue_;
  SmtpRecord record_;
  std::atomic<bool> isCancelled_ = false;
  std::atomic<bool> isSettled_ = false;
  std::mutex socketsGuard_;
  std::set<SocketHandle> sockets_;  // the open ones
  CURLcode result_ = CURLE_OK;
  std::string resultText_;
  SmtpPhase phase_ = SmtpPhase::LookUp;
  std::array<char, CURL_ERROR_SIZE> errorText_{};
  std::unique_ptr<CURLU, HandleEnd> url_;
  std::unique_ptr<curl_slist, HandleEnd> recipients_;
  std::unique_ptr<CURL, HandleEnd> handle_;
};

}  // namespace pellorin
