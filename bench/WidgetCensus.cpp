#include "bench/WidgetCensus.h"

#include <QMap>
#include <QSet>
#include <QStringList>

namespace pellorin {
namespace {

const QSet<QString> kPages{"frmMail", "frmSql", "frmQueues"};
const QSet<QString> kContainers{"QFrame", "QGroupBox"};
const QSet<QString> kControls{"QLabel",       "QLineEdit",     "QComboBox",     "QPushButton", "QToolButton",
                              "QRadioButton", "QCheckBox",     "QListView",     "QListWidget", "QTimeEdit",
                              "QDateEdit",    "QDateTimeEdit", "QPlainTextEdit"};

// The control's class, or else the nearest known one that it derives from.
QString KindOf(const QWidget& widget) {
  for (const QMetaObject* type = widget.metaObject(); type != nullptr; type = type->superClass()) {
    const QString name = QString::fromLatin1(type->className());
    if (name == "QStackedWidget") return {};
    if (kContainers.contains(name) || kControls.contains(name)) return name;
  }
  return {};
}

void Count(const QWidget& parent, const QString& page, QMap<QString, int>& counts) {
  for (const QObject* child : parent.children()) {
    if (!child->isWidgetType()) continue;
    const QWidget& widget = *static_cast<const QWidget*>(child);
    if (widget.isWindow() || widget.inherits("QTabBar")) continue;
    const QString ownPage = kPages.contains(widget.objectName()) ? widget.objectName() : page;
    const QString kind = KindOf(widget);
    if (!kind.isEmpty()) ++counts[ownPage + "/" + kind];
    if (!kControls.contains(kind)) Count(widget, ownPage, counts);  // a control's own parts do not count
  }
}

}  // namespace

QString WidgetCensus(const QWidget& window) {
  QMap<QString, int> counts;
  Count(window, "common", counts);
  QStringList words;
  for (auto entry = counts.cbegin(); entry != counts.cend(); ++entry)
    words << entry.key() + "=" + QString::number(entry.value());
  return words.join(" ");
}

}  // namespace pellorin
