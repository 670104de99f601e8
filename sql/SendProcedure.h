// Calls of sp_sendPLN that send a test mail: through a SQL Server instance, or into a queue.
#pragma once

#include <string>

#include "sql/SqlConnection.h"

namespace pellorin {

struct ProbeMail {
  std::string recipients;
  std::string message;
  std::string subject;
};

// Passes the parameters by name, with query, attachments and copies empty. SqlError.
void SendByParameters(SqlConnection& connection, const ProbeMail& mail);

// Executes the text of a command. Nothing in it is quoted: a single quote in a value makes it fail. SqlError.
void SendToQueue(SqlConnection& connection, const ProbeMail& mail, const std::string& queue);
std::string QueueCommandText(const ProbeMail& mail, const std::string& queue);

}  // namespace pellorin
