// Writes down what libcurl and a mail server say to each other: the commands with the login masked, the
// replies, the encryption and the server's certificate, and the size of the message in place of its text.
#pragma once

#include <curl/curl.h>

#include <string_view>

#include "service/mail/Conversation.h"
#include "service/mail/SmtpDelivery.h"

namespace pellorin {

class SmtpRecord {
 public:
  SmtpRecord(const SmtpServer& server, std::size_t messageSize, Conversation& conversation)
      : server_(server), messageSize_(messageSize), conversation_(conversation) {}

  // As libcurl reports it; `bytes` may hold several lines.
  void Take(curl_infotype kind, std::string_view bytes);

 private:
  void TakeCommand(std::string_view line);
  void TakeReply(std::string_view line);
  void TakeNote(std::string_view line);
  void Note(const std::string& text) { conversation_.Add(ConversationLine::Kind::Note, text); }

  const SmtpServer& server_;
  std::size_t messageSize_;
  Conversation& conversation_;
  bool isAnsweringLogin_ = false;  // the next command is a part of the login
  bool hasMessage_ = false;
};

}  // namespace pellorin
