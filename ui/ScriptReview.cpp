#include "ui/ScriptReview.h"

#include <QDialog>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QProcess>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "sql/InstallScript.h"
#include "ui/FailureMessage.h"

namespace pellorin {
namespace {

void ShowInOwnWindow(QWidget& owner, const std::string& script) {
  auto* view = new QDialog(&owner);
  view->setObjectName(QStringLiteral("frmScriptView"));
  view->setWindowTitle(QString::fromUtf8(kInstallScript));
  view->setAttribute(Qt::WA_DeleteOnClose);
  auto* text = new QPlainTextEdit(QString::fromStdString(script), view);
  text->setReadOnly(true);
  text->setTabChangesFocus(true);
  text->setLineWrapMode(QPlainTextEdit::NoWrap);
  text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text->setAccessibleName(QStringLiteral("Install script"));
  auto* layout = new QVBoxLayout(view);
  layout->setContentsMargins(9, 9, 9, 9);
  layout->addWidget(text);
  view->resize(760, 540);
  view->open();  // before its owner, which may itself be before the main window
}

}  // namespace

void ReviewScript(QWidget& owner, UserMessages& messages, const std::string& programFolder) {
  RunGuarded(messages, [&] {
    const std::string script = ReadScriptFile(SystemFiles(), programFolder, kInstallScript);
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (opener.isEmpty()) {
      ShowInOwnWindow(owner, script);
      return;
    }
    auto* process = new QProcess(&owner);
    QObject::connect(process, &QProcess::finished, &owner, [&owner, script](int status) {
      if (status != 0) ShowInOwnWindow(owner, script);
    });
    QObject::connect(process, &QProcess::errorOccurred, &owner,
                     [&owner, script](QProcess::ProcessError error) {
                       if (error == QProcess::FailedToStart) ShowInOwnWindow(owner, script);
                     });
    process->start(opener, {QString::fromStdString(JoinPath(programFolder, kInstallScript))});
  });
}

std::string ReviewCommandLine(const std::string& programFolder) {
  return "notepad \"" + programFolder + "\\" + kInstallScript;
}

}  // namespace pellorin
