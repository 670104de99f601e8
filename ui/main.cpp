// Chooses the components that the window works with, and starts it.
#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "platform/MachineName.h"
#include "platform/SqlServers.h"
#include "service/RegistryEventLog.h"
#include "service/mail/LocalMailComponent.h"
#include "sql/OdbcConnection.h"
#include "sql/SqlInstances.h"
#include "ui/boxes/QtUserMessages.h"
#include "ui/controls/ProgramStyle.h"
#include "ui/frmMain.h"
#include "ui/help/ChmHelpViewer.h"

namespace {

[[noreturn]] void EndWithoutDisplay() {
  std::fputs("PellorinConfig: there is no display to open its window on (set DISPLAY or WAYLAND_DISPLAY).\n",
             stderr);
  std::_Exit(EXIT_FAILURE);
}

// Qt warns at length and aborts when it cannot reach a display: one line and an orderly end instead.
void RefuseWithoutDisplay(QtMsgType type, const QMessageLogContext& /*context*/, const QString& /*text*/) {
  if (type != QtFatalMsg) return;
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) EndWithoutDisplay();
  std::fprintf(stderr,
               "PellorinConfig: its window cannot be opened on the platform \"%s\" (QT_QPA_PLATFORM).\n",
               qgetenv("QT_QPA_PLATFORM").constData());
  std::_Exit(EXIT_FAILURE);
}

bool NamesPlatform(int argumentCount, char** arguments) {
  for (int index = 1; index < argumentCount; ++index)
    if (QByteArray(arguments[index]).contains("-platform")) return true;
  return false;
}

void TellLocalesNotInstalled() {
  for (const std::string& name : pellorin::LocalesNotInstalled())
    std::fprintf(stderr, "PellorinConfig: the locale \"%s\" is not installed; US English takes its place.\n",
                 name.c_str());
}

std::vector<std::string> LocalInstances(pellorin::FileOperations& files) {
  std::vector<std::string> instances;
  pellorin::GetInstalledSqlInstances(*pellorin::SystemRegistry(files), pellorin::HasUnlistedSqlServer(files),
                                     pellorin::GetMachineName(), instances);
  return instances;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  const bool mayHaveDisplay =
      qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
      qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || NamesPlatform(argumentCount, arguments);
  if (!mayHaveDisplay) EndWithoutDisplay();
  qInstallMessageHandler(RefuseWithoutDisplay);
  QApplication::setStyle(new pellorin::ProgramStyle);
  QApplication application(argumentCount, arguments);
  qInstallMessageHandler(nullptr);
  TellLocalesNotInstalled();

  const std::string programFolder = QCoreApplication::applicationDirPath().toStdString();
  const std::string commandLine = QCoreApplication::arguments().mid(1).join(QLatin1Char(' ')).toStdString();
  pellorin::FileOperations& files = pellorin::SystemFiles();
  pellorin::QtUserMessages messages;
  pellorin::LocalMailComponent mail(files, programFolder, pellorin::SystemLocaleConventions());
  const auto registry = pellorin::SystemRegistry(files);
  pellorin::RegistryEventLog eventLog(*registry);
  pellorin::ChmHelpViewer help(files, messages);
  const auto connect = [&files] { return std::make_unique<pellorin::OdbcConnection>(files); };
  pellorin::ProcedureInstaller setup(connect, files, programFolder, messages);
  pellorin::frmMain window({files, messages, mail, eventLog, help, setup, connect,
                            [&files] { return LocalInstances(files); }, programFolder,
                            pellorin::SystemLocaleConventions()});
  messages.SetOwner(&window);
  return window.Form_Load(commandLine) ? QApplication::exec() : EXIT_FAILURE;
}
