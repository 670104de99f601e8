// How many controls of each kind a window has, by page, as one line of "page/kind=number" words.
#pragma once

#include <QString>
#include <QWidget>

namespace pellorin {

QString WidgetCensus(const QWidget& window);

}  // namespace pellorin
