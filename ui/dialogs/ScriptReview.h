// Shows the install script of the program's folder: in the desktop's own editor, or in a window of this
// program when the desktop has none or its editor fails.
#pragma once

#include <QObject>
#include <QWidget>
#include <string>

#include "base/UserMessages.h"
#include "platform/FileOperations.h"
#include "platform/TextEditor.h"

namespace pellorin {

// The editor's command line on Windows. The quotation mark stays open: the editor takes the rest.
std::string ReviewCommandLine(const std::string& programFolder);

class ScriptReview : public QObject {
 public:
  ScriptReview(QWidget& owner, UserMessages& messages, FileOperations& files, std::string programFolder);

  // Returns at once; the editor outlives this object. A box says when the script cannot be read.
  void Open();

 private:
  void StartEditor(const TextEditor& editor);
  void View();
  bool Read(std::string& script);

  QWidget& owner_;
  UserMessages& messages_;
  FileOperations& files_;
  std::string programFolder_;
};

}  // namespace pellorin
