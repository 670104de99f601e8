#include "service/mail/SmtpDelivery.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <optional>
#include <system_error>

#include "service/mail/MailFailure.h"
#include "service/mail/SmtpFailure.h"
#include "service/mail/SmtpTransfer.h"

namespace pellorin {
namespace {

using Clock = std::chrono::steady_clock;

std::future<void> Start(SmtpTransfer& transfer) {
  try {
    return std::async(std::launch::async, [&transfer] { transfer.Run(); });
  } catch (const std::system_error& error) {
    throw MailFailure(error.code().value(), "The mail cannot be sent: no thread could be started (" +
                                                error.code().message() + ").");
  }
}

// Waits for the end of the transfer while asking the watch. Cuts the closing short when it takes more than
// two seconds or exceeds the time-out.
void WaitFor(std::future<void>& end, SmtpTransfer& transfer, int timeout, const MailComponent::Watch& watch) {
  constexpr std::chrono::milliseconds kBetweenLooks(50);
  constexpr std::chrono::seconds kLongestClosing(2);
  const Clock::time_point start = Clock::now();
  std::optional<Clock::time_point> endOfClosing;
  while (end.wait_for(kBetweenLooks) != std::future_status::ready) {
    if (!endOfClosing && transfer.IsSettled()) {
      endOfClosing = Clock::now() + kLongestClosing;
      if (timeout != 0) endOfClosing = std::min(*endOfClosing, start + std::chrono::seconds(timeout));
    }
    if (endOfClosing && Clock::now() >= *endOfClosing) transfer.ShutDownConnection();
    try {
      if (watch && !transfer.IsCancelled() && !watch()) transfer.Cancel();
    } catch (...) {
      transfer.Cancel();
      throw;
    }
  }
  end.get();
}

}  // namespace

void DeliverBySmtp(const SmtpServer& server, const MailMessage& message, const std::string& text,
                   const MailComponent::Watch& watch, Conversation& conversation) {
  SmtpTransfer transfer(server, message, text, conversation);
  std::future<void> end = Start(transfer);
  WaitFor(end, transfer, server.timeout, watch);
  // Failures after acceptance are ignored.
  if (!transfer.Dialogue().IsAccepted()) throw FailureOf(transfer, server, message);
}

}  // namespace pellorin
