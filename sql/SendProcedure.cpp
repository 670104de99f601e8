#include "sql/SendProcedure.h"

namespace pellorin {

void SendByParameters(SqlConnection& connection, const TestMail& mail) {
  connection.CallProcedure("sp_sendPLN", {{"@recipients", mail.recipients},
                                          {"@message", mail.message},
                                          {"@query", ""},
                                          {"@attachments", ""},
                                          {"@copy_recipients", ""},
                                          {"@blind_copy_recipients", ""},
                                          {"@subject", mail.subject}});
}

std::string QueueCommandText(const TestMail& mail, const std::string& queue) {
  return "exec sp_sendPLN @recipients='" + mail.recipients + "',@message='" + mail.message + "',@subject='" +
         mail.subject + "',@queue='" + queue + "'";
}

void SendToQueue(SqlConnection& connection, const TestMail& mail, const std::string& queue) {
  connection.Execute(QueueCommandText(mail, queue));
}

}  // namespace pellorin
