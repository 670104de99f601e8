#include "ui/dialogs/ScriptReview.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QProcess>
#include <QVBoxLayout>
#include <utility>

#include "platform/Paths.h"
#include "sql/InstallScript.h"

namespace pellorin {

std::string ReviewCommandLine(const std::string& programFolder) {
  return "notepad \"" + programFolder + "\\" + kInstallScript;
}

ScriptReview::ScriptReview(QWidget& owner, UserMessages& messages, FileOperations& files,
                           std::string programFolder)
    : owner_(owner), messages_(messages), files_(files), programFolder_(std::move(programFolder)) {}

void ScriptReview::Open() {
  std::string script;
  if (!Read(script)) return;
  const auto editor = TextEditorFor(JoinPath(programFolder_, kInstallScript));
  editor ? StartEditor(*editor) : View();
}

void ScriptReview::StartEditor(const TextEditor& editor) {
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
  QStringList arguments;
  for (const std::string& argument : editor.arguments) arguments += QString::fromStdString(argument);
  process->start(QString::fromStdString(editor.program), arguments);
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
    script = ReadScriptFile(files_, programFolder_, kInstallScript);
    return true;
  } catch (const NumberedError& error) {
    messages_.Show({.text = "The install script cannot be shown.\r\n" + error.DescriptionAndPath(),
                    .title = "Review Procedure",
                    .icon = MessageIcon::Exclamation});
    return false;
  }
}

}  // namespace pellorin
