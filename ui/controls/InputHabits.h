// How the fields of every window of this program take keys, the wheel and what is pasted.
#pragma once

#include <QWidget>

namespace pellorin {

// To be called once, when the window has all its controls:
// - A text box takes texts of any length. By itself it would cut a stored text at 32,767 characters.
// - Line ends are kept out of fields of one line: SingleLineInput.h.
// - The wheel never changes a list or picker that has no focus; it scrolls the page instead.
// - Among options that exclude each other, Tab leads to the chosen one and the arrow keys to the others.
// While
//   none is chosen, Tab leads to each of them. Qt alone leads to the one that had the focus last.
void ApplyInputHabits(QWidget& window);

}  // namespace pellorin
