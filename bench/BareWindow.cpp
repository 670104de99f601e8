// A bare Qt window with as many controls of each kind, on as many pages, as another window. The
// program's start is measured against it. Arguments: width, height and the other window's
// census ("frmMail/QLineEdit=10" ...).
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTimeEdit>
#include <QToolButton>
#include <cstdio>
#include <functional>

namespace {

// Each kind of control, with something to paint in it.
const QMap<QString, std::function<QWidget*()>> kKinds{
    {"QCheckBox", [] { return new QCheckBox("Check box"); }},
    {"QComboBox",
     [] {
       auto* list = new QComboBox;
       list->addItem("Entry");
       return list;
     }},
    {"QDateEdit", [] { return new QDateEdit; }},
    {"QDateTimeEdit", [] { return new QDateTimeEdit; }},
    {"QFrame", [] { return new QFrame; }},
    {"QGroupBox", [] { return new QGroupBox("Group"); }},
    {"QLabel", [] { return new QLabel("A label"); }},
    {"QLineEdit", [] { return new QLineEdit("Some text"); }},
    {"QListView", [] { return new QListView; }},
    {"QListWidget", [] { return new QListWidget; }},
    {"QPlainTextEdit", [] { return new QPlainTextEdit; }},
    {"QPushButton", [] { return new QPushButton("Button"); }},
    {"QRadioButton", [] { return new QRadioButton("Option"); }},
    {"QTimeEdit", [] { return new QTimeEdit; }},
    {"QToolButton", [] { return new QToolButton; }},
};

// Puts the controls of one word of the census on the page, four in a row.
bool AddControls(QGridLayout& page, const QString& kind, int number) {
  if (!kKinds.contains(kind)) return false;
  for (int added = 0; added < number; ++added) {
    const int place = page.count();
    page.addWidget(kKinds[kind](), place / 4, place % 4);
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication::setStyle("Fusion");
  const QApplication application(argc, argv);
  QWidget window;
  window.setObjectName("bare");
  auto* windowLayout = new QVBoxLayout(&window);
  auto* tabs = new QTabWidget;
  windowLayout->addWidget(tabs);
  QMap<QString, QGridLayout*> pages;
  pages["common"] = new QGridLayout;
  windowLayout->addLayout(pages["common"]);
  for (const char* name : {"frmMail", "frmSql", "frmQueues"}) {
    auto* page = new QWidget;
    pages[name] = new QGridLayout(page);
    tabs->addTab(page, name);
  }

  const QStringList arguments = QApplication::arguments();
  for (const QString& word : arguments.mid(3)) {
    const QStringList parts = word.split(QRegularExpression("[/=]"));
    if (parts.size() != 3 || !pages.contains(parts[0]) ||
        !AddControls(*pages[parts[0]], parts[1], parts[2].toInt())) {
      std::fprintf(stderr, "bench_bare_window: cannot show %s\n", qPrintable(word));
      return 1;
    }
  }
  window.resize(arguments.value(1).toInt(), arguments.value(2).toInt());
  window.show();
  return QApplication::exec();
}
