#include "sql/SendProcedure.h"

namespace pellorin {

void SendByParameters(SqlConnection& connection, const ProbeMail& mail) {
  connection.CallProcedure("sp_sendPLN", {{"@recipients", mail.recipients},
                                          {"@message", mail.message},
                                          {"@query", ""},
                                          {"@attachments", ""},
                                          {"@copy_recipients", ""},
                                          {"@blind_copy_recipients", ""},
                                          {"@subject", mail.subject}});
}

std::string QueueCommandText(const ProbeMail& mail, const std::string& queue) {
  return "exec sp_sendPLN @recipients='" + mail.recipients + "',@message='" + mail.message + "',@subject='" +
         mail.subject + "',@queue='" + queue + "'";
}

void SendToQueue(SqlConnection& connection, const ProbeMail& mail, const std::string& queue) {
  connection.Execute(QueueCommandText(mail, queue));
}

}  // namespace pellorin
