// Shows the install script to its reader: in the desktop's text editor, or read-only in a window of our own
// where the desktop has none.
#pragma once

#include <QWidget>
#include <string>

#include "platform/UserMessages.h"

namespace pellorin {

// Does not wait for the editor. A script that cannot be read is reported in a box.
void ReviewScript(QWidget& owner, UserMessages& messages, const std::string& programFolder);

// What is started on Windows instead; the quotation mark is never closed there.
std::string ReviewCommandLine(const std::string& programFolder);

}  // namespace pellorin
