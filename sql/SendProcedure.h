// Calls of sp_sendPLN: the mail of the tests of a SQL Server instance and of a queue.
#pragma once

#include <string>

#include "sql/SqlConnection.h"

namespace pellorin {

struct ProbeMail {
  std::string recipients;
  std::string message;
  std::string subject;
};

// By name, with the query, attachments and copies empty. SqlError.
void SendByParameters(SqlConnection& connection, const ProbeMail& mail);

// By the text of a command that puts the mail into a queue. Values stand in it as they are: a single quote in
// one of them makes the command fail. SqlError.
void SendToQueue(SqlConnection& connection, const ProbeMail& mail, const std::string& queue);
std::string QueueCommandText(const ProbeMail& mail, const std::string& queue);

}  // namespace pellorin
