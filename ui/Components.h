// What the window works with; main chooses each part.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/UserMessages.h"
#include "platform/FileOperations.h"
#include "platform/SystemLocale.h"
#include "service/EventLogRegistration.h"
#include "service/MailComponent.h"
#include "sql/ProcedureInstaller.h"
#include "ui/boxes/HelpViewer.h"

namespace pellorin {

struct Components {
  FileOperations& files;
  UserMessages& messages;
  MailComponent& mail;
  EventLogRegistration& eventLog;
  HelpViewer& help;
  ProcedureSetup& setup;
  SqlConnectionFactory connect;
  std::function<std::vector<std::string>()> localInstances;  // of SQL Server, on this machine
  std::string programFolder;                                 // full path
  LocaleConventions locale;
};

}  // namespace pellorin
