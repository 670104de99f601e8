#include "tests/sql/TdsConnection.h"

#include <gtest/gtest.h>

namespace pellorin::tds {
namespace {

void WriteError(TokenWriter& reply, const SqlError& error) {
  reply.Error(static_cast<std::uint32_t>(error.number), error.severity, error.text, error.procedure);
}

void WriteResult(TokenWriter& reply, const ResultSet& result, End end, bool more) {
  reply.Column(result.type, result.column);
  for (const auto& row : result.rows) reply.Row(result.type, row);
  reply.Done(end, {.more = more}, result.rows.size());
}

}  // namespace

void TdsConnection::Run() {
  try {
    while (isOpen_) {
      const std::optional<Message> message = stream_.Read();
      if (!message) break;
      Handle(*message);
    }
  } catch (const ProtocolError& error) {
    ADD_FAILURE() << "The test server does not understand its client: " << error.what();
  } catch (const SqlError& error) {
    ADD_FAILURE() << "The test server does not understand the declarations of a call: " << error.text;
  }
  database_.RollBack(session_);
}

// Attention counts as no step: whether and when it comes depends on the clock.
void TdsConnection::Handle(const Message& message) {
  if (message.type == MessageType::kAttention) {
    AnswerAttention();
    return;
  }
  const Hook hook = journal_.NextStep();
  const std::function<void()> answer = Receive(message, hook);
  if (!Intervene(hook)) answer();
}

// Records what is asked. Returns what answers it.
std::function<void()> TdsConnection::Receive(const Message& message, const Hook& hook) {
  switch (message.type) {
    case MessageType::kPrelogin:
      return [this] { AnswerPrelogin(); };
    case MessageType::kLogin: {
      const Login login = ParseLogin(message.body);
      journal_.Record(login);
      return [this, login] { AnswerLogin(login); };
    }
    case MessageType::kBatch: {
      const std::string batch = ParseBatch(message.body);
      journal_.Record(batch);
      return [=, this] { Answer([=, this] { return database_.Execute(session_, batch); }, false, hook); };
    }
    case MessageType::kCall: {
      const Call call = ParseCall(message.body);
      journal_.Record(call);
      return [=, this] { AnswerCall(call, hook); };
    }
    case MessageType::kTransaction: {
      const TransactionRequest request = ParseTransaction(message.body);
      return [=, this] { AnswerTransaction(request, hook); };
    }
    default:
      throw ProtocolError("a message of the unknown type " + std::to_string(static_cast<int>(message.type)));
  }
}

// Whether the hook has taken the place of the answer.
bool TdsConnection::Intervene(const Hook& hook) {
  switch (hook.kind) {
    case Hook::Kind::kSilent:
      while (stream_.Read()) continue;
      [[fallthrough]];
    case Hook::Kind::kDrop:
      isOpen_ = false;
      return true;
    case Hook::Kind::kDelay:
      return !WaitUndisturbed(hook.time);
    case Hook::Kind::kError: {
      TokenWriter reply;
      if (hook.transaction == Hook::Transaction::kRolledBack) EndTransaction(reply, Change::kRolledBack);
      SendError(reply, {hook.number, hook.text});
      return true;
    }
    default:
      return false;
  }
}

// False when the client has broken off what it asked for, or has gone.
bool TdsConnection::WaitUndisturbed(std::chrono::milliseconds time) {
  if (!stream_.IsReadableWithin(time)) return true;
  const std::optional<Message> message = stream_.Read();
  if (!message) {
    isOpen_ = false;
  } else if (message->type == MessageType::kAttention) {
    AnswerAttention();
  } else {
    throw ProtocolError("a request before the answer to the last one");
  }
  return false;
}

void TdsConnection::SendError(TokenWriter& reply, const SqlError& error) const {
  WriteError(reply, error);
  reply.Done(End::kStatement, {.error = true});
  stream_.Write(reply.Bytes());
}

void TdsConnection::AnswerAttention() {
  TokenWriter reply;
  reply.Done(End::kStatement, {.attention = true});
  stream_.Write(reply.Bytes());
}

void TdsConnection::AnswerCall(const Call& call, const Hook& hook) {
  const TdsDatabase::Values values = NamedValues(call.declarations, call.values);
  Answer([&] { return database_.Execute(session_, call.statement, values); }, true, hook);
}

// Waits in short steps until no other connection's transaction is in the way of the action.
void TdsConnection::Answer(const Action& action, bool isCall, const Hook& hook) {
  const std::string databaseBefore = session_.database;
  std::optional<Outcome> outcome = action();
  for (; !outcome; outcome = action())
    if (!WaitUndisturbed(std::chrono::milliseconds(5))) return;
  TokenWriter reply;
  if (outcome->databaseChanged) reply.DatabaseChanged(session_.database, databaseBefore);
  if (hook.kind == Hook::Kind::kErrorAfterResult && !outcome->error) {
    if (!outcome->result) outcome->result = ResultSet{ColumnType::kCount, "", {"1"}};
    outcome->error = SqlError{hook.number, hook.text};
  }
  if (outcome->result) {
    const bool more = isCall || outcome->error;
    WriteResult(reply, *outcome->result, isCall ? End::kStatementInCall : End::kStatement, more);
  }
  if (outcome->error) WriteError(reply, *outcome->error);
  const bool failed = outcome->error.has_value();
  if (isCall || outcome->ranProcedure) {
    reply.ReturnStatus(failed ? static_cast<std::uint32_t>(outcome->error->number) : 0);
    reply.Done(End::kCall, {.error = failed});
  } else if (failed || !outcome->result) {
    reply.Done(End::kStatement, {.error = failed});
  }
  stream_.Write(reply.Bytes());
}

void TdsConnection::AnswerTransaction(TransactionRequest request, const Hook& hook) {
  TokenWriter reply;
  std::optional<SqlError> error;
  if (request.kind == TransactionRequest::Kind::kBegin) {
    BeginTransaction(reply);
  } else {
    const bool commits = request.kind == TransactionRequest::Kind::kCommit;
    error = EndTransaction(reply, commits ? Change::kCommitted : Change::kRolledBack);
    if (request.beginsAgain && !error) BeginTransaction(reply);
  }
  if (hook.kind == Hook::Kind::kErrorAfterResult) {
    reply.Done(End::kStatement, {.more = true});
    error = SqlError{hook.number, hook.text};
  }
  if (error) {
    SendError(reply, *error);
  } else {
    reply.Done(End::kStatement, {});
    stream_.Write(reply.Bytes());
  }
}

void TdsConnection::BeginTransaction(TokenWriter& reply) {
  database_.Begin(session_);
  transaction_ = std::string(7, '\0') + static_cast<char>(++transactions_);
  reply.ChangeBytes(Change::kBegun, transaction_, {});
}

std::optional<SqlError> TdsConnection::EndTransaction(TokenWriter& reply, Change change) {
  const bool commits = change == Change::kCommitted;
  if (const auto error = commits ? database_.Commit(session_) : database_.RollBack(session_)) return error;
  reply.ChangeBytes(change, {}, transaction_);
  return {};
}

}  // namespace pellorin::tds
