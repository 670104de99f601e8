// How the fields of all windows of this program treat keys, the wheel and pasted texts.
#pragma once

#include <QWidget>

namespace pellorin {

// Call it once, when the window has all its controls:
// - A text box takes texts of any length. By itself it would cut a stored text at 32,767 characters.
// - A text that is longer than its box shows its beginning, unless the user is in the box.
// - Line ends are kept out of fields of one line: SingleLineInput.h.
// - The wheel never changes a list or picker that has no focus; it scrolls the page instead.
// - Among options that exclude each other, Tab leads to the chosen one and the arrow keys to the others. Tab
//   leads to each of them while none is chosen. Qt alone leads to the one that had the focus last.
// - An open list shows up to 20 rows. A text that is too long for its list is whole in the tip.
// - A password can be read while the button at the end of its box is held down.
void ApplyInputHabits(QWidget& window);

}  // namespace pellorin
