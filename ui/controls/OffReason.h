// Says in the tool tip of a control why it is off. The reason is the dynamic property "whyOff" in the .ui
// file.
#pragma once

#include <QWidget>

namespace pellorin {

// Call it once, when the window has all its controls and their usual tips.
void ExplainWhatIsOff(QWidget& window);

}  // namespace pellorin
