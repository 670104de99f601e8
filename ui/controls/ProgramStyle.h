// The look of the program: Qt's own style, except that drop-down lists scroll instead of covering the screen.
#pragma once

#include <QProxyStyle>

namespace pellorin {

class ProgramStyle : public QProxyStyle {
 public:
  ProgramStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override {
    return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, returned);
  }
};

}  // namespace pellorin
