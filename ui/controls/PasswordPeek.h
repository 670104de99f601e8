// A button at the end of a password box: the password can be read while it is held down.
#pragma once

#include <QLineEdit>

namespace pellorin {

void AddPasswordPeek(QLineEdit& box);

}  // namespace pellorin
