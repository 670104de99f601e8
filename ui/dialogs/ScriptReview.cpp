#include "ui/dialogs/ScriptReview.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QProcess>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <utility>

#include "platform/FileOperations.h"
#include "platform/Paths.h"
#include "sql/InstallScript.h"

namespace pellorin {

std::string ReviewCommandLine(const std::string& programFolder) {
  return "notepad \"" + programFolder + "\\" + kInstallScript;
}

ScriptReview::ScriptReview(QWidget& owner, UserMessages& messages, std::string programFolder)
    : owner_(owner), messages_(messages), programFolder_(std::move(programFolder)) {}

void ScriptReview::Open() {
  std::string script;
  if (!Read(script)) return;
  const QString editor = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
  editor.isEmpty() ? View() : StartEditor(editor);
}

void ScriptReview::StartEditor(const QString& editor) {
  auto* process = new QProcess;  // without a parent, whose end would end the editor
  process->setStandardInputFile(QProcess::nullDevice());
  process->setStandardOutputFile(QProcess::nullDevice());
  process->setStandardErrorFile(QProcess::nullDevice());
  connect(process, &QProcess::finished, process, &QObject::deleteLater);
  connect(process, &QProcess::finished, this, [this](int status, QProcess::ExitStatus end) {
    if (status != 0 || end != QProcess::NormalExit) View();
  });
  connect(process, &QProcess::errorOccurred, this, [this, process](QProcess::ProcessError error) {
    if (error != QProcess::FailedToStart) return;  // after any other error, the process finishes
    process->deleteLater();
    View();
  });
  process->start(editor, {QString::fromStdString(JoinPath(programFolder_, kInstallScript))});
}

void ScriptReview::View() {
  std::string script;
  if (!owner_.isVisible() || !Read(script)) return;
  auto* view = new QDialog(&owner_);
  view->setObjectName(QStringLiteral("frmScriptView"));
  view->setAttribute(Qt::WA_DeleteOnClose);
  view->setWindowTitle(QString::fromUtf8(kInstallScript));
  auto* text = new QPlainTextEdit(QString::fromStdString(script), view);
  text->setObjectName(QStringLiteral("txtScript"));
  text->setAccessibleName(QStringLiteral("Install script"));
  text->setReadOnly(true);
  text->setTabChangesFocus(true);
  text->setLineWrapMode(QPlainTextEdit::NoWrap);
  text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, view);
  connect(buttons, &QDialogButtonBox::rejected, view, &QDialog::reject);
  auto* layout = new QVBoxLayout(view);
  layout->setContentsMargins(9, 9, 9, 9);
  layout->setSpacing(6);
  layout->addWidget(text);
  layout->addWidget(buttons);
  view->resize(800, 520);
  view->open();
}

bool ScriptReview::Read(std::string& script) {
  try {
    script = ReadScriptFile(SystemFiles(), programFolder_, kInstallScript);
    return true;
  } catch (const NumberedError& error) {
    const bool namesFile = error.Description().find(error.Path()) != std::string::npos;
    messages_.Show({.text = "The install script cannot be shown.\r\n" + error.Description() +
                            (namesFile ? "" : "\r\n" + error.Path()),
                    .title = "Review Procedure",
                    .icon = MessageIcon::Exclamation});
    return false;
  }
}

}  // namespace pellorin
