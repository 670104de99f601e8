// The look of the program: Qt's own style, except that drop-down lists scroll instead of covering the screen,
// and that a text which is too long for its list ends in an ellipsis.
#pragma once

#include <QProxyStyle>
#include <QStyleOptionComboBox>

namespace pellorin {

class ProgramStyle : public QProxyStyle {
 public:
  ProgramStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override {
    return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, returned);
  }

  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    const auto* list = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (element != CE_ComboBoxLabel || list == nullptr)
      return QProxyStyle::drawControl(element, option, painter, widget);
    QStyleOptionComboBox shortened(*list);
    shortened.currentText = ShownText(*list, widget);
    QProxyStyle::drawControl(element, &shortened, painter, widget);
  }

  // What fits of a list's text.
  QString ShownText(const QStyleOptionComboBox& list, const QWidget* widget) const {
    constexpr int kMargin = 2;  // that the label leaves on both sides
    const int width = subControlRect(CC_ComboBox, &list, SC_ComboBoxEditField, widget).width() - 2 * kMargin;
    return list.fontMetrics.elidedText(list.currentText, Qt::ElideRight, width);
  }
};

}  // namespace pellorin
