// One client's conversation with the test server.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "tests/sql/TdsDatabase.h"
#include "tests/sql/TdsJournal.h"
#include "tests/sql/TdsProtocol.h"
#include "tests/sql/TdsRequests.h"

namespace pellorin::tds {

class TdsConnection {
 public:
  TdsConnection(int descriptor, TdsDatabase& database, TdsJournal& journal)
      : stream_(descriptor), database_(database), journal_(journal) {}

  void Run();  // until either side closes the connection; an open transaction is then rolled back

 private:
  using Action = std::function<std::optional<Outcome>()>;

  void Handle(const Message& message);
  std::function<void()> Receive(const Message& message, const Hook& hook);
  bool Intervene(const Hook& hook);
  bool WaitUndisturbed(std::chrono::milliseconds time);

  void AnswerPrelogin();
  void AnswerLogin(const Login& login);
  void AnswerCall(const Call& call, const Hook& hook);
  void AnswerTransaction(TransactionRequest request, const Hook& hook);
  void Answer(const Action& action, bool isCall, const Hook& hook);
  void AnswerAttention();

  std::optional<SqlError> CheckLogin(const Login& login);
  void SendError(TokenWriter& reply, const SqlError& error) const;
  void BeginTransaction(TokenWriter& reply);
  std::optional<SqlError> EndTransaction(TokenWriter& reply, Change change);

  PacketStream stream_;
  TdsDatabase& database_;
  TdsJournal& journal_;
  TdsSession session_;
  bool isOpen_ = true;
  std::string transaction_;  // identifies the open one; 8 bytes
  unsigned char transactions_ = 0;
};

}  // namespace pellorin::tds
