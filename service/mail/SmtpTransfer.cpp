#include "service/mail/SmtpTransfer.h"

#include <algorithm>
#include <system_error>

#include "base/Utf8.h"
#include "platform/HostName.h"
#include "platform/MachineName.h"
#include "service/mail/MailFailure.h"

namespace pellorin {
namespace {

// Seconds: the longest wait that libcurl accepts. To libcurl, 0 means two minutes.
constexpr long kLongestWait = 2147483;

CURL* NewHandle() {
  static const CURLcode started = Curl().curl_global_init(CURL_GLOBAL_DEFAULT);
  CURL* handle = started == CURLE_OK ? Curl().curl_easy_init() : nullptr;
  if (handle == nullptr) throw MailFailure(CURLE_FAILED_INIT, "libcurl cannot be started.");
  return handle;
}

void Require(CURLcode code) {
  if (code != CURLE_OK)
    throw MailFailure(code, std::string("The mail cannot be prepared: ") + Curl().curl_easy_strerror(code));
}

// libcurl widens each byte of an NTLM login to a character. NTLM uses the user's name in upper case, but
// libcurl converts only a to z.
std::string NtlmText(const std::string& what, const std::string& utf8, bool upperCase) {
  std::string latin1;
  for (std::size_t index = 0; index < utf8.size();) {
    auto [value, length] = DecodeUtf8(utf8, index);
    if (length == 0 || value > 0xFF)
      throw MailFailure(kBadMailArgument, what + " holds a character that an NTLM login cannot carry here " +
                                              "(it is outside Latin-1). Nothing was sent.");
    if (upperCase && value >= 0xE0 && value <= 0xFE && value != 0xF7) value -= 0x20;
    latin1 += static_cast<char>(value);
    index += length;
  }
  return latin1;
}

}  // namespace

SmtpTransfer::SmtpTransfer(const SmtpServer& server, const MailMessage& message, const std::string& text,
                           Conversation& conversation)
    : server_(server),
      text_(text),
      dialogue_(server.login, server.isEncryptedFromStart, message.to.size()),
      record_(server, text.size(), conversation),
      url_(Curl().curl_url()),
      handle_(NewHandle()) {
  SetAddress();
  SetTimes();
  SetLogin();
  SetMessage(message);
  SetCallbacks();
}

template <typename Value>
void SmtpTransfer::Set(CURLoption option, Value value) {
  Require(Curl().curl_easy_setopt(handle_.get(), option, value));
}

void SmtpTransfer::SetAddress() {
  const bool isIpv6 = server_.host.find(':') != std::string::npos && !server_.host.starts_with('[');
  const std::string host = isIpv6 ? "[" + server_.host + "]" : AsciiHostName(server_.host);
  const auto set = [this](CURLUPart part, const std::string& text, unsigned flags = 0) {
    const CURLUcode code = Curl().curl_url_set(url_.get(), part, text.c_str(), flags);
    if (code != CURLUE_OK)
      throw MailFailure(CURLE_URL_MALFORMAT, "The mail server " + server_.host + ", port " +
                                                 std::to_string(server_.port) +
                                                 " cannot be used: " + Curl().curl_url_strerror(code));
  };
  set(CURLUPART_SCHEME, server_.isEncryptedFromStart ? "smtps" : "smtp");
  set(CURLUPART_HOST, host);
  set(CURLUPART_PORT, std::to_string(server_.port));
  set(CURLUPART_PATH, "/" + GetMailHelloName(), CURLU_URLENCODE);
  Set(CURLOPT_CURLU, url_.get());
  Set(CURLOPT_PROTOCOLS_STR, "smtp,smtps");
  Set(CURLOPT_PROXY, "");  // or the environment could divert the mail
  Set(CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_TRY));
  Set(CURLOPT_SSL_VERIFYPEER, 0L);
  Set(CURLOPT_SSL_VERIFYHOST, 0L);
}

void SmtpTransfer::SetTimes() {
  const long wait = server_.timeout == 0 ? kLongestWait : std::min<long>(server_.timeout, kLongestWait);
  if (server_.timeout != 0) Set(CURLOPT_TIMEOUT, wait);
  Set(CURLOPT_CONNECTTIMEOUT, wait);
  Set(CURLOPT_SERVER_RESPONSE_TIMEOUT, wait);
  Set(CURLOPT_NOSIGNAL, 1L);
  Set(CURLOPT_QUICK_EXIT, 1L);  // does not wait for a name server at the end
  Set(CURLOPT_TCP_KEEPALIVE, 1L);
}

void SmtpTransfer::SetLogin() {
  if (server_.login == SmtpLogin::Anonymous) return;
  const bool isNtlm = server_.login == SmtpLogin::Ntlm;
  Set(CURLOPT_LOGIN_OPTIONS, isNtlm ? "AUTH=NTLM" : "AUTH=PLAIN;AUTH=LOGIN");
  const std::string user = isNtlm ? NtlmText("The user name", server_.user, true) : server_.user;
  const std::string password = isNtlm ? NtlmText("The password", server_.password, false) : server_.password;
  Set(CURLOPT_USERNAME, user.c_str());
  Set(CURLOPT_PASSWORD, password.c_str());
}

void SmtpTransfer::SetMessage(const MailMessage& message) {
  Set(CURLOPT_MAIL_FROM, ("<" + message.from.address + ">").c_str());
  for (const MailAddress& recipient : message.to) {
    curl_slist* longer = Curl().curl_slist_append(recipients_.get(), ("<" + recipient.address + ">").c_str());
    if (longer == nullptr) Require(CURLE_OUT_OF_MEMORY);
    (void)recipients_.release();
    recipients_.reset(longer);
  }
  Set(CURLOPT_MAIL_RCPT, recipients_.get());
  Set(CURLOPT_UPLOAD, 1L);
  Set(CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(text_.size()));
}

void SmtpTransfer::SetCallbacks() {
  Set(CURLOPT_READFUNCTION, &OnRead);
  Set(CURLOPT_READDATA, this);
  Set(CURLOPT_HEADERFUNCTION, &OnReply);
  Set(CURLOPT_HEADERDATA, this);
  Set(CURLOPT_XFERINFOFUNCTION, &OnProgress);
  Set(CURLOPT_XFERINFODATA, this);
  Set(CURLOPT_NOPROGRESS, 0L);
  Set(CURLOPT_OPENSOCKETFUNCTION, &OnOpen);
  Set(CURLOPT_OPENSOCKETDATA, this);
  Set(CURLOPT_CLOSESOCKETFUNCTION, &OnClose);
  Set(CURLOPT_CLOSESOCKETDATA, this);
  Set(CURLOPT_ERRORBUFFER, errorText_.data());
  Set(CURLOPT_DEBUGFUNCTION, &OnDebug);
  Set(CURLOPT_DEBUGDATA, this);
  Set(CURLOPT_VERBOSE, 1L);  // or nothing is reported
}

void SmtpTransfer::Run() {
  LetBrokenConnectionsFail();
  KeepResult(Curl().curl_easy_perform(handle_.get()));
  // Ending the handle sends QUIT and waits for the answer as long as for any other. That is useless when the
  // server is already silent.
  if (!isSettled_) ShutDownConnection();
  handle_.reset();
}

// Called before the handle ends, because its QUIT may overwrite the text.
void SmtpTransfer::KeepResult(CURLcode result) {
  result_ = result;
  resultText_ = errorText_[0] != '\0' ? errorText_.data() : Curl().curl_easy_strerror(result);
  long systemError = 0;
  Curl().curl_easy_getinfo(handle_.get(), CURLINFO_OS_ERRNO, &systemError);
  if (result == CURLE_COULDNT_CONNECT && systemError != 0)
    resultText_ = std::system_category().message(static_cast<int>(systemError));
  phase_ = ReachedPhase();
}

SmtpPhase SmtpTransfer::ReachedPhase() const {
  curl_off_t foundAfter = 0;  // microseconds; 0: not found
  curl_off_t encryptedAfter = 0;
  const char* address = nullptr;  // of the connection; empty without one
  Curl().curl_easy_getinfo(handle_.get(), CURLINFO_NAMELOOKUP_TIME_T, &foundAfter);
  Curl().curl_easy_getinfo(handle_.get(), CURLINFO_APPCONNECT_TIME_T, &encryptedAfter);
  Curl().curl_easy_getinfo(handle_.get(), CURLINFO_PRIMARY_IP, &address);
  if (foundAfter == 0) return SmtpPhase::LookUp;
  if (address == nullptr || *address == '\0') return SmtpPhase::Connecting;
  return dialogue_.IsEncrypted() && encryptedAfter == 0 ? SmtpPhase::Handshake : SmtpPhase::Conversation;
}

void SmtpTransfer::Cancel() {
  isCancelled_ = true;
  ShutDownConnection();
}

void SmtpTransfer::ShutDownConnection() {
  const std::lock_guard lock(socketsGuard_);
  for (const SocketHandle socket : sockets_) ShutDownSocket(socket);
}

int SmtpTransfer::OnDebug(CURL*, curl_infotype kind, char* bytes, std::size_t size, void* self) {
  static_cast<SmtpTransfer*>(self)->record_.Take(kind, {bytes, size});
  return 0;
}

std::size_t SmtpTransfer::OnReply(char* bytes, std::size_t size, std::size_t count, void* self) {
  auto& transfer = *static_cast<SmtpTransfer*>(self);
  SmtpDialogue& dialogue = transfer.dialogue_;
  const bool goesOn = dialogue.Take({bytes, size * count});
  // After a refusal libcurl still sends QUIT; after an obstacle it sends nothing more.
  transfer.isSettled_ = goesOn && (dialogue.IsAccepted() || dialogue.IsRefused());
  return goesOn ? size * count : 0;
}

std::size_t SmtpTransfer::OnRead(char* buffer, std::size_t size, std::size_t count, void* self) {
  auto& transfer = *static_cast<SmtpTransfer*>(self);
  const std::size_t taken = transfer.text_.copy(buffer, size * count, transfer.sent_);
  transfer.sent_ += taken;
  return taken;
}

int SmtpTransfer::OnProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  return static_cast<SmtpTransfer*>(self)->isCancelled_ ? 1 : 0;
}

curl_socket_t SmtpTransfer::OnOpen(void* self, curlsocktype, curl_sockaddr* address) {
  auto& transfer = *static_cast<SmtpTransfer*>(self);
  const std::lock_guard lock(transfer.socketsGuard_);
  if (transfer.isCancelled_) return CURL_SOCKET_BAD;
  const SocketHandle socket = OpenSocket(address->family, address->socktype, address->protocol);
  if (socket == kNoSocket) return CURL_SOCKET_BAD;
  transfer.sockets_.insert(socket);
  return static_cast<curl_socket_t>(socket);
}

int SmtpTransfer::OnClose(void* self, curl_socket_t socket) {
  auto& transfer = *static_cast<SmtpTransfer*>(self);
  const std::lock_guard lock(transfer.socketsGuard_);
  transfer.sockets_.erase(socket);
  return CloseSocket(static_cast<SocketHandle>(socket)) ? 0 : 1;
}

}  // namespace pellorin
