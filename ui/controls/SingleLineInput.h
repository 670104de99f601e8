// Keeps line ends out of fields of one line. A text that is pasted, dropped, or committed by an input method
// loses its line ends, and the control characters at its beginning and end. What the program puts into a
// field stays as it is.
#pragma once

#include <QString>
#include <QWidget>

namespace pellorin {

// "\tsecret\n" becomes "secret", "one\r\ntwo" becomes "onetwo".
QString WithoutLineEnds(const QString& text);

// Watches every text box of the window, including those inside drop-down lists and pickers.
void KeepInputToOneLine(QWidget& window);

}  // namespace pellorin
