#include "service/mail/PickupDelivery.h"

#include "files/AtomicFile.h"
#include "platform/Paths.h"
#include "service/mail/MailFailure.h"

namespace pellorin {
namespace {

std::string Envelope(const MailMessage& message) {
  std::string lines = "X-Sender: " + message.from.address + "\r\n";
  for (const MailAddress& recipient : message.to) lines += "X-Receiver: " + recipient.address + "\r\n";
  return lines;
}

void RequireUsableFolder(FileOperations& files, const std::string& folder) {
  const auto refuse = [&folder](int number, const char* reason) {
    throw MailFailure(number, "The pickup folder " + folder + " " + reason + ".");
  };
  if (folder.empty()) throw MailFailure(kBadMailArgument, "The pickup folder is not set.");
  // The current folder of the service is not that of this program.
  if (!IsFullPath(folder)) refuse(kBadMailArgument, "is not a full path");
  const FileKind kind = files.Status(folder).kind;
  if (kind == FileKind::Missing) refuse(SystemErrorNumber(FileProblem::Missing), "does not exist");
  if (kind != FileKind::Folder) refuse(SystemErrorNumber(FileProblem::IsNotFolder), "is not a folder");
  if (files.IsReadOnly(folder)) refuse(SystemErrorNumber(FileProblem::ReadOnly), "is read-only");
}

}  // namespace

void DeliverToPickupFolder(FileOperations& files, const std::string& folder, const std::string& guid,
                           const MailMessage& message, const std::string& text, Conversation& conversation) {
  try {
    RequireUsableFolder(files, folder);
    const std::string path = JoinPath(folder, guid);
    WriteNewFileAtomically(files, path + ".part", path + ".eml", Envelope(message) + text,
                           NewFileAccess::FolderUsual);
    conversation.Add(ConversationLine::Kind::Note, "Wrote " + path + ".eml");
  } catch (const FileError& error) {
    throw MailFailure(error.Number(), "The message could not be put into the pickup folder " + folder +
                                          ".\r\n" + error.DescriptionAndPath());
  }
}

}  // namespace pellorin
