#include "tests/sql/TdsServer.h"

#include <gtest/gtest.h>

#include "tests/sql/TdsReply.h"

namespace pellorin::tds {
namespace {

// One client's conversation.
class Conversation {
 public:
  Conversation(const LoopbackSocket& socket, TdsDatabase& database, TdsJournal& journal)
      : socket_(socket), database_(database), journal_(journal) {}

  // Until either side closes the connection; an open transaction is then rolled back.
  void Run() {
    try {
      while (isOpen_) {
        const std::optional<Message> message = ReadMessage(socket_);
        if (!message) break;
        Handle(*message);
      }
    } catch (const ProtocolError& error) {
      ADD_FAILURE() << "The test server does not understand its client: " << error.what();
    }
    database_.End(session_, false);
  }

 private:
  // Attention counts as no step: whether and when it comes depends on the clock.
  void Handle(const Message& message) {
    if (message.type == MessageType::kAttention) {
      TokenWriter reply;
      reply.Done(kAttention);
      return Send(reply);
    }
    const Hook hook = journal_.NextStep();
    if (Intervene(hook)) return;
    switch (message.type) {
      case MessageType::kPrelogin:
        return AnswerPrelogin();
      case MessageType::kLogin:
        return AnswerLogin(journal_.Recorded(ParseLogin(message.body)));
      case MessageType::kBatch:
        return Answer(database_.Execute(session_, journal_.Recorded(ParseBatch(message.body))), hook);
      case MessageType::kCall:
        return Answer(database_.Execute(session_, journal_.Recorded(ParseCall(message.body)).statement),
                      hook);
      case MessageType::kTransaction:
        return AnswerTransaction(ParseTransaction(message.body));
      default:
        throw ProtocolError("the unknown message " + std::to_string(static_cast<int>(message.type)));
    }
  }

  // Whether the hook has taken the place of the answer.
  bool Intervene(const Hook& hook) {
    switch (hook.kind) {
      case Hook::Kind::kSilent:
        while (ReadMessage(socket_)) continue;
        [[fallthrough]];
      case Hook::Kind::kDrop:
        isOpen_ = false;
        return true;
      case Hook::Kind::kBytes:
        socket_.Write(hook.text);
        return true;
      case Hook::Kind::kError: {
        TokenWriter reply;
        if (hook.transaction == Hook::Transaction::kRolledBack && !database_.End(session_, false))
          reply.TransactionChanged(Change::kRolledBack);
        SendError(reply, {hook.number, hook.text});
        return true;
      }
      default:
        return false;
    }
  }

  // Version, and encryption "not supported": a client that does not insist goes on in clear.
  void AnswerPrelogin() const {
    constexpr std::string_view kOptions{"\x00\x00\x0B\x00\x06\x01\x00\x11\x00\x01\xFF", 11};
    constexpr std::string_view kValues{"\x10\x00\x03\xE8\x00\x00\x02", 7};
    WriteReply(socket_, std::string(kOptions) + std::string(kValues));
  }

  void AnswerLogin(const Login& login) {
    TokenWriter reply;
    isOpen_ = journal_.Accepts(login);
    if (!isOpen_) return SendError(reply, {18456, "Login failed for user '" + login.user + "'."});
    reply.DatabaseChanged(session_.database, "master");
    reply.LoginAcknowledged();
    reply.Done();
    Send(reply);
  }

  void Answer(Outcome outcome, const Hook& hook) const {
    if (hook.kind == Hook::Kind::kErrorAfterResult && !outcome.error) {
      if (!outcome.rows) outcome.rows = Rows{"a row"};
      outcome.error = SqlError{hook.number, hook.text};
    }
    TokenWriter reply;
    if (outcome.databaseBefore) reply.DatabaseChanged(session_.database, *outcome.databaseBefore);
    if (outcome.rows) reply.Result(*outcome.rows, outcome.error.has_value());
    if (outcome.error) return SendError(reply, *outcome.error);
    if (!outcome.rows) reply.Done();
    Send(reply);
  }

  void AnswerTransaction(TransactionRequest request) {
    TokenWriter reply;
    const bool begins = request.kind == TransactionRequest::Kind::kBegin;
    const bool commits = request.kind == TransactionRequest::Kind::kCommit;
    if (!begins) {
      if (const auto error = database_.End(session_, commits)) return SendError(reply, *error);
      reply.TransactionChanged(commits ? Change::kCommitted : Change::kRolledBack);
    }
    if (begins || request.beginsAgain) {
      database_.Begin(session_);
      reply.TransactionChanged(Change::kBegun);
    }
    reply.Done();
    Send(reply);
  }

  void SendError(TokenWriter& reply, const SqlError& error) const {
    reply.Error(error);
    reply.Done(kFailed);
    Send(reply);
  }

  void Send(const TokenWriter& reply) const { WriteReply(socket_, reply.Bytes()); }

  const LoopbackSocket& socket_;
  TdsDatabase& database_;
  TdsJournal& journal_;
  TdsSession session_;
  bool isOpen_ = true;
};

}  // namespace

TdsServer::TdsServer() : listener_(LoopbackSocket::Listening()) {
  acceptor_ = std::thread([this] { Accept(); });
}

TdsServer::~TdsServer() {
  {
    const std::lock_guard lock(mutex_);
    isStopping_ = true;
    listener_.Shutdown();
    for (const Client& client : clients_) client.socket.Shutdown();
  }
  acceptor_.join();
  for (Client& client : clients_) client.thread.join();
}

void TdsServer::Accept() {
  while (true) {
    LoopbackSocket socket = listener_.Accept();
    const std::lock_guard lock(mutex_);
    if (isStopping_ || !socket.IsOpen()) return;
    Client& client = clients_.emplace_back(std::move(socket));
    client.thread = std::thread([this, &client] {
      Conversation(client.socket, database_, *this).Run();
      const std::lock_guard closing(mutex_);
      client.socket.Close();
    });
  }
}

}  // namespace pellorin::tds
