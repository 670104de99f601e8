#include "ui/boxes/HelpFileBox.h"

namespace pellorin {

void HelpFileBox::ShowTopic(QWidget& /*owner*/, const std::string& file, const std::string& topic) {
  const bool isMissing = files_.Status(file).kind == FileKind::Missing;
  messages_.Show({.text = isMissing ? "The help file is not installed:\r\n" + file
                                    : "This program cannot show help files here. Please open the topic \"" +
                                          topic + "\" of this file with another viewer:\r\n" + file,
                  .icon = MessageIcon::Information});
}

}  // namespace pellorin
